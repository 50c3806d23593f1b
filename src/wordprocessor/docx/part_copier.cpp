#include "wordprocessor/docx/part_copier.h"

#include <string_view>

#include "wordprocessor/docx/tree_reader.h"
#include "wordprocessor/docx/word_xml.h"

namespace wordprocessor {
namespace {

constexpr std::string_view kEmptyRelations =
    "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\"/>";

/// A child of the root, in the root's own namespace.
pugi::xml_node AddLike(pugi::xml_document& document, std::string_view local_name) {
  auto root = document.document_element();
  const std::string root_name = root.name();
  const auto prefix = root_name.substr(0, root_name.size() - LocalNameOf(root_name).size());
  return root.append_child((prefix + std::string(local_name)).c_str());
}

pugi::xml_node AddRelation(pugi::xml_document& document, const std::string& id, const std::string& type,
                           const std::string& target) {
  auto element = AddLike(document, "Relationship");
  element.append_attribute("Id").set_value(id.c_str());
  element.append_attribute("Type").set_value(type.c_str());
  element.append_attribute("Target").set_value(target.c_str());
  return element;
}

}  // namespace

DocxPartCopier::DocxPartCopier(const DocxPackage& letter, const DocxPackage& common, std::string main_part)
    : letter_(letter),
      common_(common),
      main_part_(std::move(main_part)),
      common_types_(common),
      types_(LoadPartXml(letter.Read(kContentTypesPart))) {
  const auto relations = RelationsPartOf(main_part_);
  relations_ = LoadPartXml(letter.Has(relations) ? letter.Read(relations) : std::string(kEmptyRelations));
  for (const auto& relation : relations_.document_element().children()) {
    ids_.insert(relation.attribute("Id").value());
  }
}

std::string DocxPartCopier::Relate(const DocxRelation& relation) {
  const auto copy = Copy(relation.target);
  std::string id;
  do {
    id = "rIdCommon" + std::to_string(++last_id_);
  } while (!ids_.insert(id).second);
  AddRelation(relations_, id, relation.type, "/" + copy);
  return id;
}

void DocxPartCopier::Rewrite(const std::string& part, std::string text) {
  for (auto& [name, content] : written_) {
    if (name == copies_.at(part)) content = std::move(text);
  }
}

void DocxPartCopier::AppendTo(std::vector<PackagePart>& parts) {
  if (copies_.empty()) return;
  written_.emplace_back(RelationsPartOf(main_part_), PartText(relations_));
  written_.emplace_back(std::string(kContentTypesPart), PartText(types_));
  for (const auto& [name, content] : written_) parts.push_back({name, content});
}

std::string DocxPartCopier::Copy(const std::string& part) {
  if (const auto found = copies_.find(part); found != copies_.end()) return found->second;
  auto name = FreeName(part);
  copies_.emplace(part, name);
  written_.emplace_back(name, common_.Read(part));
  auto type = AddLike(types_, "Override");
  type.append_attribute("PartName").set_value(("/" + name).c_str());
  type.append_attribute("ContentType").set_value(common_types_.Of(part).c_str());
  CopyRelations(part, name);
  return name;
}

void DocxPartCopier::CopyRelations(const std::string& part, const std::string& copy) {
  const auto relations = ReadRelations(common_, part);
  if (relations.empty()) return;
  auto document = LoadPartXml(kEmptyRelations);
  for (const auto& relation : relations) {
    if (!relation.external && !common_.Has(relation.target)) continue;
    const auto target = relation.external ? relation.target : "/" + Copy(relation.target);
    auto element = AddRelation(document, relation.id, relation.type, target);
    if (relation.external) element.append_attribute("TargetMode").set_value("External");
  }
  written_.emplace_back(RelationsPartOf(copy), PartText(document));
}

std::string DocxPartCopier::FreeName(const std::string& part) {
  const auto folder = main_part_.substr(0, main_part_.rfind('/') + 1);  // "" without a folder: npos + 1 is 0
  const auto file = part.substr(part.rfind('/') + 1);
  std::string name;
  do {
    name = folder + "common" + std::to_string(++last_name_) + "_" + file;
  } while (letter_.Has(name));
  return name;
}

}  // namespace wordprocessor
