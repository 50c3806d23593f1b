#include "apps/letters/context_text.h"

#include <array>

#include "composition/node_state.h"
#include "platform/xml/xml.h"

namespace apps {
namespace {

using platform::XmlElement;

constexpr auto kForTheScreen =
    std::to_array<const char*>({"Err", "AddrState", "V_ExplainAddr", "V_ExplainType", "V_ExplainState",
                                "V_ExplainAttr", "V_ExplainErr", "RawValue"});

/// Of the flag words, the merge needs to know which fields are tables.
void Simplify(XmlElement element, composition::ZEMLO_NodeState& state) {
  state.InitFromNode(element);
  if (!state.IsTableType()) element.RemoveAttribute("State");
  for (const auto* attribute : kForTheScreen) element.RemoveAttribute(attribute);
  for (const auto& child : element.Children()) Simplify(child, state);
}

bool IsForTheUser(const XmlElement& field, composition::ZEMLO_NodeState& state) {
  state.InitFromNode(field);
  return state.IsUserType() && field.Text().empty();
}

}  // namespace

ContextText ContextText::Of(const std::string& context) {
  const auto document = platform::XmlDocument::Parse(context).OrFail();
  auto root = document.Root();
  composition::ZEMLO_NodeState state;
  ContextText made;
  std::string lines;
  for (const auto& field : root.Children()) {
    if (IsForTheUser(field, state)) {
      made.missing.push_back(field.Name() + " (" + field.Attribute("V_EnglishDesc").value_or("") + ")");
    } else {
      Simplify(field, state);
      lines += "  " + field.Xml() + "\n";
    }
    root.RemoveChild(field);
  }
  Simplify(root, state);
  const auto tags = root.Xml();
  made.xml = tags.substr(0, tags.find_first_of("/>")) + ">\n" + lines + "</" + root.Name() + ">\n";
  return made;
}

}  // namespace apps
