#include "composition/paragraph_marks.h"

#include "composition/node_state.h"
#include "platform/agreed/field_names.h"
#include "platform/xml/xml.h"

namespace composition {
namespace {

void RemoveUnmarkedParagraphs(platform::XmlElement root) {
  ZEMLO_NodeState state;
  for (const auto& child : root.Children()) {
    if (!platform::IsParagraphField(child.Name())) continue;
    state.InitFromNode(child);
    if (!state.IsUserUnSelected()) root.RemoveChild(child);
  }
}

}  // namespace

std::string MergeText(const std::string& bookmark_xml) {
  const auto document = platform::XmlDocument::Parse(bookmark_xml).OrFail();
  RemoveUnmarkedParagraphs(document.Root());
  return document.Root().Xml();
}

std::string GetBKforPrint(const platform::Services& services, const std::string& bookmark_xml) {
  std::string prepared;
  platform::Trap(services, "ZEMLO_PreviewDoc.GetBKforPrint", [&] { prepared = MergeText(bookmark_xml); });
  return prepared;
}

void MarkParagraph(platform::XmlElement paragraph, bool mark) {
  ZEMLO_NodeState state;
  state.InitFromNode(paragraph);
  state.SetIsUserUnSelected(mark);
  state.Save(paragraph);
  if (mark) paragraph.SetText("");
}

}  // namespace composition
