#include "wordprocessor/document/common_template.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>
#include <vector>

#include <pugixml.hpp>

#include "platform/failure.h"
#include "wordprocessor/document/blueprint.h"
#include "wordprocessor/docx/part_copier.h"
#include "wordprocessor/docx/relations.h"
#include "wordprocessor/docx/tree_reader.h"
#include "wordprocessor/docx/word_xml.h"

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

struct Margin {
  const char* name;
  bool with_head;
  bool with_foot;
  bool of_upright_pages = false;  ///< a wide table's page keeps its own
};

constexpr auto kMargins = std::to_array<Margin>({
    {"top", true, false},
    {"header", true, false},
    {"bottom", false, true},
    {"footer", false, true},
    {"left", true, false, true},
    {"right", true, false, true},
    {"gutter", true, false, true},
});

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
    for (const auto& section : sections) {
      AttachPageSetup(section, common);
      AttachMargins(section, common);
    }
  }

  /// Later sections show the headers of the first one where they have none.
  void AttachHeaders(const std::vector<pugi::xml_node>& sections, const pugi::xml_node& common) {
    const bool headers = !AnySectionHas(sections, "headerReference");
    const bool footers = !AnySectionHas(sections, "footerReference");
    const bool first_page = headers && footers && WordChild(common, "titlePg");
    heads_ = headers && AttachReferences(sections.front(), common, "headerReference", first_page);
    feet_ = footers && AttachReferences(sections.front(), common, "footerReference", first_page);
    if (!first_page || WordChild(sections.front(), "titlePg")) return;
    CopyWordElement(WordChild(common, "titlePg"), AddToSection(sections.front(), "titlePg", names_), names_);
  }

  /// Returns whether there were any.
  bool AttachReferences(const pugi::xml_node& section, const pugi::xml_node& common, std::string_view kind,
                        bool first_page) {
    bool any = false;
    for (const auto& reference : WordChildren(common, kind)) {
      const auto type = WordAttribute(reference, "type");
      if (type == "first" && !first_page && !WordChild(section, "titlePg")) continue;
      const auto relation = std::ranges::find(common_relations_, RelationIdOf(reference), &DocxRelation::id);
      if (relation == common_relations_.end() || !common_.Has(relation->target)) continue;
      auto added = AddToSection(section, kind, names_);
      added.append_attribute(names_.Attribute("type").c_str()).set_value(type.c_str());
      added.append_attribute(names_.Relation("id").c_str()).set_value(copier_.Relate(*relation).c_str());
      document_changed_ = any = true;
    }
    return any;
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

  /// A letterhead stands where its own margins put it, and the text below it, whatever the letter says: word
  /// processors write margins into every document, LibreOffice even distances of 0 where it sees no header.
  void AttachMargins(const pugi::xml_node& section, const pugi::xml_node& common) {
    const auto source = WordChild(common, "pgMar");
    auto target = WordChild(section, "pgMar");
    if (!source || !target) return;
    const bool upright = WordAttribute(WordChild(section, "pgSz"), "orient") != "landscape";
    for (const auto& margin : kMargins) {
      const bool wanted = (margin.with_head && heads_) || (margin.with_foot && feet_);
      const auto value = WordAttribute(source, margin.name);
      if (!wanted || (margin.of_upright_pages && !upright) || value.empty()) continue;
      SetWordAttribute(target, margin.name, value, names_);
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
  DocxPartCopier copier_;
  const std::vector<DocxRelation> common_relations_;
  bool document_changed_ = false;
  bool heads_ = false;  // the letter has taken the common template's headers
  bool feet_ = false;
  std::string styles_part_;
  std::string styles_text_;
};

}  // namespace

std::optional<std::string> WithCommonTemplate(const DocxPackage& letter, const DocxPackage& common) {
  return platform::While("attaching the common template \"" + common.file_name() + "\"",
                         [&] { return CommonTemplate(letter, common).Attach(); });
}

}  // namespace wordprocessor
