#include "wordprocessor/docx_common_template.h"

#include <algorithm>
#include <array>
#include <deque>
#include <map>
#include <set>
#include <utility>
#include <vector>

#include <pugixml.hpp>

#include "platform/failure.h"
#include "wordprocessor/docx_blueprint.h"
#include "wordprocessor/docx_relations.h"
#include "wordprocessor/docx_tree_reader.h"
#include "wordprocessor/docx_word_xml.h"

namespace wordprocessor {
namespace {

// ECMA-376, part 1, 17.6.17: the children of a section's properties in their order.
constexpr auto kSectionOrder = std::to_array<std::string_view>({
    "headerReference", "footerReference", "footnotePr",      "endnotePr",    "type",          "pgSz",
    "pgMar",           "paperSrc",        "pgBorders",       "lnNumType",    "pgNumType",     "cols",
    "formProt",        "vAlign",          "noEndnote",       "titlePg",      "textDirection", "bidi",
    "rtlGutter",       "docGrid",         "printerSettings", "sectPrChange",
});

constexpr auto kPageSetup = std::to_array<std::string_view>({"pgSz", "pgMar"});

constexpr std::string_view kEmptyRelations =
    "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\"/>";

std::size_t PlaceInSection(std::string_view local_name) {
  return static_cast<std::size_t>(std::ranges::find(kSectionOrder, local_name) - kSectionOrder.begin());
}

pugi::xml_node AddToSection(pugi::xml_node section, std::string_view local_name, const PartNames& names) {
  const auto name = names.Element(local_name);
  for (const auto& child : section.children()) {
    if (PlaceInSection(LocalNameOf(child.name())) > PlaceInSection(local_name)) {
      return section.insert_child_before(name.c_str(), child);
    }
  }
  return section.append_child(name.c_str());
}

void FindSections(const pugi::xml_node& node, std::vector<pugi::xml_node>& sections) {
  for (const auto& child : node.children()) {
    if (IsWordElement(child, "sectPrChange")) continue;
    if (IsWordElement(child, "sectPr")) sections.push_back(child);
    FindSections(child, sections);
  }
}

bool AnySectionHas(const std::vector<pugi::xml_node>& sections, std::string_view local_name) {
  return std::ranges::any_of(sections, [&](const pugi::xml_node& section) {
    return static_cast<bool>(WordChild(section, local_name));
  });
}

/// Copies parts of the common template into the letter and keeps its lists of parts and relations right.
class PartCopier {
 public:
  PartCopier(const DocxPackage& letter, const DocxPackage& common, std::string main_part)
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

  /// Returns the id of the letter's relation to the copy.
  std::string Relate(const DocxRelation& relation) {
    const auto copy = Copy(relation.target);
    auto root = relations_.document_element();
    std::string id;
    do {
      id = "rIdCommon" + std::to_string(++last_id_);
    } while (!ids_.insert(id).second);
    AddRelation(root, id, relation.type, "/" + copy);
    return id;
  }

  /// What was copied and what keeps account of it. Good while this object lives.
  void AppendTo(std::vector<PackagePart>& parts) {
    if (copies_.empty()) return;
    written_.push_back({RelationsPartOf(main_part_), PartText(relations_)});
    written_.push_back({std::string(kContentTypesPart), PartText(types_)});
    for (const auto& [name, content] : written_) parts.push_back({name, content});
  }

 private:
  std::string Copy(const std::string& part) {
    if (const auto found = copies_.find(part); found != copies_.end()) return found->second;
    const auto name = FreeName(part);
    copies_.emplace(part, name);
    written_.push_back({name, common_.Read(part)});
    auto type = types_.document_element().append_child(Like(types_, "Override").c_str());
    type.append_attribute("PartName").set_value(("/" + name).c_str());
    type.append_attribute("ContentType").set_value(common_types_.Of(part).c_str());
    CopyRelations(part, name);
    return name;
  }

  void CopyRelations(const std::string& part, const std::string& copy) {
    const auto relations = ReadRelations(common_, part);
    if (relations.empty()) return;
    auto document = LoadPartXml(kEmptyRelations);
    for (const auto& relation : relations) {
      if (!relation.external && !common_.Has(relation.target)) continue;
      const auto target = relation.external ? relation.target : "/" + Copy(relation.target);
      auto element = AddRelation(document.document_element(), relation.id, relation.type, target);
      if (relation.external) element.append_attribute("TargetMode").set_value("External");
    }
    written_.push_back({RelationsPartOf(copy), PartText(document)});
  }

  static pugi::xml_node AddRelation(pugi::xml_node root, const std::string& id, const std::string& type,
                                    const std::string& target) {
    const std::string root_name = root.name();
    const auto prefix = root_name.substr(0, root_name.size() - LocalNameOf(root_name).size());
    auto element = root.append_child((prefix + "Relationship").c_str());
    element.append_attribute("Id").set_value(id.c_str());
    element.append_attribute("Type").set_value(type.c_str());
    element.append_attribute("Target").set_value(target.c_str());
    return element;
  }

  static std::string Like(const pugi::xml_document& document, std::string_view local_name) {
    const std::string root_name = document.document_element().name();
    return root_name.substr(0, root_name.size() - LocalNameOf(root_name).size()) + std::string(local_name);
  }

  std::string FreeName(const std::string& part) {
    const auto slash = main_part_.rfind('/');
    const auto folder = slash == std::string::npos ? std::string() : main_part_.substr(0, slash + 1);
    const auto file = part.substr(part.rfind('/') + 1);
    std::string name;
    do {
      name = folder + "common" + std::to_string(++last_name_) + "_" + file;
    } while (letter_.Has(name));
    return name;
  }

  const DocxPackage& letter_;
  const DocxPackage& common_;
  const std::string main_part_;
  const ContentTypes common_types_;
  pugi::xml_document types_;
  pugi::xml_document relations_;
  std::set<std::string> ids_;
  std::map<std::string, std::string> copies_;                // new name by the common template's
  std::deque<std::pair<std::string, std::string>> written_;  // name and content
  int last_id_ = 0;
  int last_name_ = 0;
};

class CommonTemplate {
 public:
  CommonTemplate(const DocxPackage& letter, const DocxPackage& common)
      : letter_(letter),
        common_(common),
        main_part_(FindMainPart(letter)),
        common_main_part_(FindMainPart(common)),
        document_(LoadPartXml(letter.Read(main_part_))),
        common_document_(LoadPartXml(common.Read(common_main_part_))),
        names_(document_.document_element()),
        copier_(letter, common, main_part_),
        common_relations_(ReadRelations(common, common_main_part_)) {}

  std::optional<std::string> Attach() {
    AttachSections();
    AttachStyles();
    std::vector<PackagePart> parts;
    const auto main_text = document_changed_ ? PartText(document_) : std::string();
    if (document_changed_) parts.push_back({main_part_, main_text});
    if (!styles_text_.empty()) parts.push_back({styles_part_, styles_text_});
    copier_.AppendTo(parts);
    return parts.empty() ? std::nullopt : std::optional(letter_.With(parts));
  }

 private:
  void AttachSections() {
    std::vector<pugi::xml_node> common_sections;
    FindSections(common_document_, common_sections);
    const auto body = WordChild(document_.document_element(), "body");
    if (common_sections.empty() || !body) return;
    std::vector<pugi::xml_node> sections;
    FindSections(document_, sections);
    if (sections.empty()) {
      sections.push_back(pugi::xml_node(body).append_child(names_.Element("sectPr").c_str()));
    }
    const auto& common = common_sections.back();
    AttachHeaders(sections, common);
    for (const auto& section : sections) AttachPageSetup(section, common);
  }

  /// Later sections show the headers of the first one where they have none.
  void AttachHeaders(const std::vector<pugi::xml_node>& sections, const pugi::xml_node& common) {
    const bool headers = !AnySectionHas(sections, "headerReference");
    const bool footers = !AnySectionHas(sections, "footerReference");
    const bool first_page = headers && footers && WordChild(common, "titlePg");
    if (headers) AttachReferences(sections.front(), common, "headerReference", first_page);
    if (footers) AttachReferences(sections.front(), common, "footerReference", first_page);
    if (!first_page || WordChild(sections.front(), "titlePg")) return;
    CopyWordElement(WordChild(common, "titlePg"), AddToSection(sections.front(), "titlePg", names_), names_);
  }

  void AttachReferences(const pugi::xml_node& section, const pugi::xml_node& common, std::string_view kind,
                        bool first_page) {
    for (const auto& reference : WordChildren(common, kind)) {
      const auto type = WordAttribute(reference, "type");
      if (type == "first" && !first_page && !WordChild(section, "titlePg")) continue;
      const auto relation = std::ranges::find(common_relations_, RelationIdOf(reference), &DocxRelation::id);
      if (relation == common_relations_.end() || !common_.Has(relation->target)) continue;
      auto added = AddToSection(section, kind, names_);
      added.append_attribute(names_.Attribute("type").c_str()).set_value(type.c_str());
      added.append_attribute(names_.Relation("id").c_str()).set_value(copier_.Relate(*relation).c_str());
      document_changed_ = true;
    }
  }

  static std::string RelationIdOf(const pugi::xml_node& reference) {
    for (const auto& attribute : reference.attributes()) {
      const std::string_view name = attribute.name();
      if (LocalNameOf(name) == "id" && name.size() > 3) return attribute.value();
    }
    return {};
  }

  void AttachPageSetup(const pugi::xml_node& section, const pugi::xml_node& common) {
    for (const auto name : kPageSetup) {
      const auto source = WordChild(common, name);
      if (!source || WordChild(section, name)) continue;
      CopyWordElement(source, AddToSection(section, name, names_), names_);
      document_changed_ = true;
    }
  }

  void AttachStyles() {
    const auto common = std::ranges::find(common_relations_, "styles", &DocxRelation::kind);
    if (common == common_relations_.end() || !common_.Has(common->target)) return;
    const auto relations = ReadRelations(letter_, main_part_);
    const auto own = std::ranges::find(relations, "styles", &DocxRelation::kind);
    if (own == relations.end() || !letter_.Has(own->target)) {
      copier_.Relate(*common);
      return;
    }
    styles_part_ = own->target;
    auto styles = LoadPartXml(letter_.Read(own->target));
    if (AddMissingStyles(styles.document_element(), LoadPartXml(common_.Read(common->target)))) {
      styles_text_ = PartText(styles);
    }
  }

  static bool AddMissingStyles(pugi::xml_node styles, const pugi::xml_document& common) {
    const PartNames names(styles);
    std::set<std::string> known;
    std::set<std::string> with_default;
    for (const auto& style : WordChildren(styles, "style")) {
      known.insert(WordAttribute(style, "styleId"));
      if (!WordAttribute(style, "default").empty()) with_default.insert(WordAttribute(style, "type"));
    }
    bool added = false;
    if (const auto defaults = WordChild(common.document_element(), "docDefaults");
        defaults && !WordChild(styles, "docDefaults")) {
      CopyWordElement(defaults, styles.prepend_child(pugi::node_element), names);
      added = true;
    }
    for (const auto& style : WordChildren(common.document_element(), "style")) {
      if (known.contains(WordAttribute(style, "styleId"))) continue;
      auto copy = styles.append_child(pugi::node_element);
      // Its numbering is defined in a part that stays behind.
      CopyWordElement(style, copy, names, "numPr");
      if (with_default.contains(WordAttribute(style, "type"))) {
        copy.remove_attribute(names.Attribute("default").c_str());
      }
      added = true;
    }
    return added;
  }

  const DocxPackage& letter_;
  const DocxPackage& common_;
  const std::string main_part_;
  const std::string common_main_part_;
  pugi::xml_document document_;
  pugi::xml_document common_document_;
  const PartNames names_;
  PartCopier copier_;
  const std::vector<DocxRelation> common_relations_;
  bool document_changed_ = false;
  std::string styles_part_;
  std::string styles_text_;
};

}  // namespace

std::optional<std::string> WithCommonTemplate(const DocxPackage& letter, const DocxPackage& common) {
  return platform::While("attaching the common template \"" + common.file_name() + "\"",
                         [&] { return CommonTemplate(letter, common).Attach(); });
}

}  // namespace wordprocessor
