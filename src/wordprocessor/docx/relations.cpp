#include "wordprocessor/docx/relations.h"

#include <algorithm>
#include <charconv>

#include "platform/failure.h"
#include "wordprocessor/docx/tree_reader.h"

namespace wordprocessor {
namespace {

std::string Lower(std::string_view text) {
  std::string lower(text);
  for (auto& letter : lower) {
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
  }
  return lower;
}

std::string WithoutPercents(std::string_view text) {
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    unsigned code = 0;
    const auto digits = text.substr(i).substr(0, 3);
    if (digits.size() == 3 && digits[0] == '%' &&
        std::from_chars(digits.data() + 1, digits.data() + 3, code, 16).ptr == digits.data() + 3) {
      plain += static_cast<char>(code);
      i += 2;
    } else {
      plain += text[i];
    }
  }
  return plain;
}

std::string_view LastWord(std::string_view type) {
  return type.substr(type.rfind('/') + 1);
}

std::string FolderOf(std::string_view part) {
  const auto slash = part.rfind('/');
  return slash == std::string_view::npos ? std::string() : std::string(part.substr(0, slash + 1));
}

}  // namespace

std::string_view LocalNameOf(std::string_view name) {
  return name.substr(name.find(':') + 1);  // all of it without a colon: npos + 1 is 0
}

std::string RelationsPartOf(std::string_view part) {
  const auto folder = FolderOf(part);
  return folder + "_rels/" + std::string(part.substr(folder.size())) + ".rels";
}

std::string ResolveTarget(std::string_view part, std::string_view target) {
  const auto plain = WithoutPercents(target);
  const auto path = plain.starts_with('/') ? plain : "/" + FolderOf(part) + plain;
  std::string resolved;
  for (std::size_t begin = 1; begin <= path.size();) {
    const auto end = std::min(path.find('/', begin), path.size());
    const auto step = path.substr(begin, end - begin);
    begin = end + 1;
    if (step == "..") {
      resolved.resize(resolved.rfind('/') == resolved.npos ? 0 : resolved.rfind('/'));
    } else if (!step.empty() && step != ".") {
      resolved += (resolved.empty() ? "" : "/") + step;
    }
  }
  return resolved;
}

std::vector<DocxRelation> ReadRelations(const DocxPackage& package, std::string_view part) {
  const auto relations_part = RelationsPartOf(part);
  if (!package.Has(relations_part)) return {};
  const auto document = platform::While("reading " + relations_part + " of \"" + package.file_name() + "\"",
                                        [&] { return LoadPartXml(package.Read(relations_part)); });
  std::vector<DocxRelation> relations;
  for (const auto& element : document.document_element().children()) {
    if (LocalNameOf(element.name()) != "Relationship") continue;
    DocxRelation relation;
    relation.id = element.attribute("Id").value();
    relation.type = element.attribute("Type").value();
    relation.kind = LastWord(relation.type);
    relation.external = std::string_view(element.attribute("TargetMode").value()) == "External";
    const std::string_view target = element.attribute("Target").value();
    relation.target = relation.external ? std::string(target) : ResolveTarget(part, target);
    relations.push_back(std::move(relation));
  }
  return relations;
}

bool LeadsToPart(const DocxRelation& relation, const DocxPackage& package) {
  return !relation.external && package.Has(relation.target);
}

const DocxRelation* FindRelated(const std::vector<DocxRelation>& relations, const DocxPackage& package,
                                std::string_view kind) {
  const auto found = std::ranges::find(relations, kind, &DocxRelation::kind);
  return found == relations.end() || !LeadsToPart(*found, package) ? nullptr : &*found;
}

ContentTypes::ContentTypes(const DocxPackage& package) {
  if (!package.Has(kContentTypesPart)) {
    package.Damaged("is a zip file but no document. Open it in the word processor and save it as .docx.");
  }
  const auto document = platform::While("reading the content types of \"" + package.file_name() + "\"",
                                        [&] { return LoadPartXml(package.Read(kContentTypesPart)); });
  for (const auto& element : document.document_element().children()) {
    const std::string type = element.attribute("ContentType").value();
    const auto name = LocalNameOf(element.name());
    if (name == "Default") by_ending_.try_emplace(Lower(element.attribute("Extension").value()), type);
    if (name == "Override") {
      by_part_.try_emplace(Lower(ResolveTarget({}, element.attribute("PartName").value())), type);
    }
  }
}

std::string ContentTypes::Of(std::string_view part) const {
  const auto lower = Lower(part);
  if (const auto found = by_part_.find(lower); found != by_part_.end()) return found->second;
  const auto ending = by_ending_.find(lower.substr(lower.rfind('.') + 1));
  return ending == by_ending_.end() ? std::string() : ending->second;
}

}  // namespace wordprocessor
