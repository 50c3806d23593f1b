#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

#include "wordprocessor/docx/kind.h"
#include "wordprocessor/docx/relations.h"
#include "wordprocessor/files/package.h"

/// WordprocessingML in pugixml's own tree: for the few parts that are changed once, not for every letter.
namespace wordprocessor {

/// The part that the first relation of that kind leads to; empty where there is none. Throws Failure
/// kDamaged.
pugi::xml_document LoadRelated(const DocxPackage& package, const std::vector<DocxRelation>& relations,
                               std::string_view kind);

/// The namespace that a prefix means at `element`.
DocxNamespace SpaceAt(pugi::xml_node element, std::string_view prefix);

bool IsWordElement(const pugi::xml_node& node, std::string_view local_name);
pugi::xml_node WordChild(const pugi::xml_node& parent, std::string_view local_name);
std::vector<pugi::xml_node> WordChildren(const pugi::xml_node& parent, std::string_view local_name);
/// "" where it is absent.
std::string WordAttribute(const pugi::xml_node& element, std::string_view local_name);

/// The names that elements and attributes of a namespace have in a part: with the prefix its root declares,
/// which is declared there where it is not yet.
class PartNames {
 public:
  explicit PartNames(const pugi::xml_node& root);

  std::string Element(std::string_view local_name) const { return element_prefix_ + std::string(local_name); }
  std::string Attribute(std::string_view local_name) const {
    return attribute_prefix_ + std::string(local_name);
  }
  std::string Relation(std::string_view local_name) const {
    return relation_prefix_ + std::string(local_name);
  }

 private:
  std::string element_prefix_;
  std::string attribute_prefix_;
  std::string relation_prefix_;
};

/// Sets an attribute of WordprocessingML, under whatever prefix it is there already.
void SetWordAttribute(pugi::xml_node element, std::string_view local_name, const std::string& value,
                      const PartNames& names);

/// Makes `target` a copy of `source` under the names of its own part. What is not of WordprocessingML stays
/// behind, and so does what `left_out` names.
void CopyWordElement(const pugi::xml_node& source, pugi::xml_node target, const PartNames& names,
                     std::string_view left_out = {});

/// As it goes into a package.
std::string PartText(const pugi::xml_document& document);

}  // namespace wordprocessor
