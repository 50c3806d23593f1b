#include "apps/letters/context_text.h"

#include <array>
#include <string_view>

#include "composition/node_state.h"
#include "platform/agreed/field_attributes.h"
#include "platform/xml/xml.h"

namespace apps {
namespace {

using platform::XmlElement;

namespace field_attribute = platform::field_attribute;

constexpr auto kForTheScreen = std::to_array<std::string_view>(
    {field_attribute::kErrors, field_attribute::kAddressState, field_attribute::kExplainedAddress,
     field_attribute::kExplainedType, field_attribute::kExplainedState, field_attribute::kExplainedAttributes,
     field_attribute::kExplainedErrors, field_attribute::kRawValue});

/// Of the flag words, the merge needs to know which fields are tables.
void Simplify(XmlElement element, composition::ZEMLO_NodeState& state) {
  state.InitFromNode(element);
  if (!state.IsTableType()) element.RemoveAttribute(field_attribute::kState);
  for (const auto attribute : kForTheScreen) element.RemoveAttribute(attribute);
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
      made.missing.push_back(field.Name() + " (" +
                             field.Attribute(field_attribute::kDescription).value_or("") + ")");
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
