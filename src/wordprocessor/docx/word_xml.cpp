#include "wordprocessor/docx/word_xml.h"

#include <sstream>

#include "wordprocessor/docx/tree_reader.h"

namespace wordprocessor {
namespace {

std::string_view PrefixOf(std::string_view name) {
  const auto colon = name.find(':');
  return colon == std::string_view::npos ? std::string_view() : name.substr(0, colon);
}

constexpr std::string_view kStrictWord = "http://purl.oclc.org/ooxml/wordprocessingml/main";

struct RelationsUri {
  bool strict;
  const char* uri;
};

constexpr RelationsUri kRelationsUris[] = {
    {false, "http://schemas.openxmlformats.org/officeDocument/2006/relationships"},
    {true, "http://purl.oclc.org/ooxml/officeDocument/relationships"},
};

/// A prefix that `root` declares for the namespace, with its colon; "" where it declares none.
std::string DeclaredPrefix(const pugi::xml_node& root, DocxNamespace space) {
  for (const auto& attribute : root.attributes()) {
    const std::string_view name = attribute.name();
    if (name.starts_with("xmlns:") && DocxNamespaceOf(attribute.value()) == space) {
      return std::string(name.substr(6)) + ":";
    }
  }
  return {};
}

std::string Declare(pugi::xml_node root, std::string prefix, const char* uri) {
  while (root.attribute(("xmlns:" + prefix).c_str())) prefix += "x";
  root.append_attribute(("xmlns:" + prefix).c_str()).set_value(uri);
  return prefix + ":";
}

}  // namespace

pugi::xml_document LoadRelated(const DocxPackage& package, const std::vector<DocxRelation>& relations,
                               std::string_view kind) {
  const auto* part = FindRelated(relations, package, kind);
  return part == nullptr ? pugi::xml_document() : LoadPartXml(package.Read(part->target));
}

DocxNamespace SpaceAt(pugi::xml_node element, std::string_view prefix) {
  const auto name = prefix.empty() ? std::string("xmlns") : "xmlns:" + std::string(prefix);
  for (; element; element = element.parent()) {
    if (const auto declared = element.attribute(name.c_str())) return DocxNamespaceOf(declared.value());
  }
  return DocxNamespace::kOther;
}

bool IsWordElement(const pugi::xml_node& node, std::string_view local_name) {
  return node.type() == pugi::node_element && LocalNameOf(node.name()) == local_name &&
         SpaceAt(node, PrefixOf(node.name())) == DocxNamespace::kWord;
}

pugi::xml_node WordChild(const pugi::xml_node& parent, std::string_view local_name) {
  for (const auto& child : parent.children()) {
    if (IsWordElement(child, local_name)) return child;
  }
  return {};
}

std::vector<pugi::xml_node> WordChildren(const pugi::xml_node& parent, std::string_view local_name) {
  std::vector<pugi::xml_node> children;
  for (const auto& child : parent.children()) {
    if (IsWordElement(child, local_name)) children.push_back(child);
  }
  return children;
}

std::string WordAttribute(const pugi::xml_node& element, std::string_view local_name) {
  for (const auto& attribute : element.attributes()) {
    const auto prefix = PrefixOf(attribute.name());
    if (LocalNameOf(attribute.name()) == local_name && SpaceAt(element, prefix) == DocxNamespace::kWord) {
      return attribute.value();
    }
  }
  return {};
}

PartNames::PartNames(const pugi::xml_node& root) {
  const auto prefix = PrefixOf(root.name());
  if (!prefix.empty()) element_prefix_ = std::string(prefix) + ":";
  attribute_prefix_ = prefix.empty() ? DeclaredPrefix(root, DocxNamespace::kWord) : element_prefix_;
  relation_prefix_ = DeclaredPrefix(root, DocxNamespace::kRelations);
  const auto declaration = prefix.empty() ? std::string("xmlns") : "xmlns:" + std::string(prefix);
  const std::string uri = root.attribute(declaration.c_str()).value();
  if (attribute_prefix_.empty()) attribute_prefix_ = Declare(root, "w", uri.c_str());
  if (relation_prefix_.empty()) {
    relation_prefix_ = Declare(root, "r", kRelationsUris[uri == kStrictWord ? 1 : 0].uri);
  }
}

void SetWordAttribute(pugi::xml_node element, std::string_view local_name, const std::string& value,
                      const PartNames& names) {
  for (auto attribute : element.attributes()) {
    const auto prefix = PrefixOf(attribute.name());
    if (LocalNameOf(attribute.name()) != local_name || SpaceAt(element, prefix) != DocxNamespace::kWord)
      continue;
    attribute.set_value(value.c_str());
    return;
  }
  element.append_attribute(names.Attribute(local_name).c_str()).set_value(value.c_str());
}

void CopyWordElement(const pugi::xml_node& source, pugi::xml_node target, const PartNames& names,
                     std::string_view left_out) {
  target.set_name(names.Element(LocalNameOf(source.name())).c_str());
  for (const auto& attribute : source.attributes()) {
    if (SpaceAt(source, PrefixOf(attribute.name())) != DocxNamespace::kWord) continue;
    if (PrefixOf(attribute.name()).empty()) continue;
    target.append_attribute(names.Attribute(LocalNameOf(attribute.name())).c_str())
        .set_value(attribute.value());
  }
  for (const auto& child : source.children()) {
    if (!IsWordElement(child, LocalNameOf(child.name())) || LocalNameOf(child.name()) == left_out) continue;
    CopyWordElement(child, target.append_child(pugi::node_element), names, left_out);
  }
}

std::string PartText(const pugi::xml_document& document) {
  std::ostringstream out;
  out << "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
  document.save(out, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
  return out.str();
}

}  // namespace wordprocessor
