#include "wordprocessor/docx/property_values.h"

#include "wordprocessor/docx/escape.h"
#include "wordprocessor/docx/relations.h"

namespace wordprocessor {

bool IsOn(std::string_view value, bool without) {
  return value.empty() ? without : value != "0" && value != "false" && value != "off";
}

NodeId PropertyOf(const DocxTree& tree, NodeId properties, std::string_view local_name) {
  if (properties == kNoNode) return kNoNode;
  auto child = tree[properties].first_child;
  while (child != kNoNode && (!tree[child].is_element() || LocalNameOf(tree[child].name()) != local_name)) {
    child = tree[child].next;
  }
  return child;
}

std::string StyleNamed(const DocxTree& tree, NodeId properties, std::string_view local_name) {
  const auto style = PropertyOf(tree, properties, local_name);
  return style == kNoNode ? std::string() : Unescaped(tree.Attribute(style, "val"));
}

}  // namespace wordprocessor
