#include "wordprocessor/document/common_template.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <utility>
#include <vector>

#include <pugixml.hpp>

#include "platform/failure.h"
#include "wordprocessor/document/blueprint.h"
#include "wordprocessor/document/letterhead_numbering.h"
#include "wordprocessor/document/letterhead_styles.h"
#include "wordprocessor/document/sections.h"
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
  bool of_pages_alike = false;  ///< a wide table's page keeps its own
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
        relations_(ReadRelations(letter, main_part_)),
        common_relations_(ReadRelations(common, common_main_part_)),
        common_styles_(common, common_relations_) {}

  std::optional<std::string> Attach() {
    AttachSections();
    AttachStyles();
    if (document_changed_) changed_[main_part_] = PartText(document_);
    std::vector<PackagePart> parts;
    for (const auto& [name, text] : changed_) parts.push_back({name, text});
    copier_.AppendTo(parts);
    return parts.empty() ? std::nullopt : std::optional(letter_.With(parts));
  }

 private:
  void AttachSections() {
    const auto common_sections = SectionsOf(common_document_);
    const auto body = WordChild(document_.document_element(), "body");
    if (common_sections.empty() || !body) return;
    sections_ = SectionsOf(document_);
    if (sections_.empty()) {
      sections_.push_back(pugi::xml_node(body).append_child(names_.Element("sectPr").c_str()));
    }
    const auto& common = common_sections.back();
    AttachHeaders(common);
    for (const auto& section : sections_) {
      AttachPageSize(section, common);
      AttachPageSetup(section, common);
      AttachMargins(section, common);
    }
  }

  /// Later sections show the headers of the first one where they have none.
  void AttachHeaders(const pugi::xml_node& common) {
    const bool headers = !AnySectionHas(sections_, "headerReference");
    const bool footers = !AnySectionHas(sections_, "footerReference");
    const bool first_page = headers && footers && WordChild(common, "titlePg");
    if (headers && footers && !first_page) {
      // Nothing of the letter's own is on it.
      for (auto& one : sections_)
        document_changed_ = one.remove_child(WordChild(one, "titlePg")) || document_changed_;
    }
    heads_ = headers && AttachReferences(common, "headerReference", first_page);
    feet_ = footers && AttachReferences(common, "footerReference", first_page);
    const auto& section = sections_.front();
    if (first_page && !WordChild(section, "titlePg")) {
      CopyWordElement(WordChild(common, "titlePg"), AddToSection(section, "titlePg", names_), names_);
    }
  }

  /// Returns whether there were any. Where the letter sets first or even pages apart and the common template
  /// does not, they show what all its pages show.
  bool AttachReferences(const pugi::xml_node& common, std::string_view kind, bool first_page) {
    bool any = AttachReference(common, kind, "default", "default");
    if (first_page || AnySectionHas(sections_, "titlePg")) {
      any = AttachReference(common, kind, "first", WordChild(common, "titlePg") ? "first" : "default") || any;
    }
    if (SetsEvenPagesApart(letter_, relations_)) {
      const bool apart = SetsEvenPagesApart(common_, common_relations_);
      any = AttachReference(common, kind, "even", apart ? "even" : "default") || any;
    }
    return any;
  }

  bool AttachReference(const pugi::xml_node& common, std::string_view kind, const char* type,
                       std::string_view common_type) {
    for (const auto& reference : WordChildren(common, kind)) {
      const auto relation = std::ranges::find(common_relations_, RelationIdOf(reference), &DocxRelation::id);
      if (WordAttribute(reference, "type") != common_type) continue;
      if (relation == common_relations_.end() || !common_.Has(relation->target)) continue;
      auto added = AddToSection(sections_.front(), kind, names_);
      added.append_attribute(names_.Attribute("type").c_str()).set_value(type);
      added.append_attribute(names_.Relation("id").c_str()).set_value(copier_.Relate(*relation).c_str());
      letterhead_.insert(relation->target);
      return document_changed_ = true;
    }
    return false;
  }

  static bool SetsEvenPagesApart(const DocxPackage& package, const std::vector<DocxRelation>& relations) {
    const auto document = LoadRelated(package, relations, "settings");
    return static_cast<bool>(WordChild(document.document_element(), "evenAndOddHeaders"));
  }

  static std::string RelationIdOf(const pugi::xml_node& reference) {
    for (const auto& attribute : reference.attributes()) {
      const std::string_view name = attribute.name();
      if (LocalNameOf(name) == "id" && name.size() > 3) return attribute.value();
    }
    return {};
  }

  /// A page across keeps the size and the margins that its wide table needs.
  static bool LiesOtherwise(const pugi::xml_node& section, const pugi::xml_node& common) {
    return PageSizeOf(section).IsAcross() != PageSizeOf(common).IsAcross();
  }

  /// The letterhead's tabs and its place on the sheet are made for its own page size.
  void AttachPageSize(pugi::xml_node section, const pugi::xml_node& common) {
    const auto source = WordChild(common, "pgSz");
    const auto own = WordChild(section, "pgSz");
    if (!heads_ || !source || !own || LiesOtherwise(section, common)) return;
    section.remove_child(own);
    CopyWordElement(source, AddToSection(section, "pgSz", names_), names_);
    document_changed_ = true;
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
    const bool as_common = !LiesOtherwise(section, common);
    for (const auto& margin : kMargins) {
      const bool wanted = (margin.with_head && heads_) || (margin.with_foot && feet_);
      const auto value = WordAttribute(source, margin.name);
      if (!wanted || (margin.of_pages_alike && !as_common) || value.empty()) continue;
      SetWordAttribute(target, margin.name, value, names_);
      document_changed_ = true;
    }
  }

  void AttachStyles() {
    const auto* common = FindRelated(common_relations_, common_, "styles");
    const auto* own = FindRelated(relations_, letter_, "styles");
    if (common != nullptr && own == nullptr) copier_.Relate(*common);
    // What nobody asks for is not read: a damaged theme keeps no letter from being made.
    std::optional<SettledStyles> own_styles;
    if (own != nullptr && !letterhead_.empty()) own_styles.emplace(letter_, relations_);
    LetterheadStyles styles(common_styles_, own_styles ? *own_styles : common_styles_);
    AttachLetterhead(styles);
    if (common == nullptr) return;
    const auto target =
        LoadPartXml(own == nullptr ? PartText(common_styles_.document) : letter_.Read(own->target));
    bool changed = AddMissingStyles(target.document_element());
    changed = styles.AddTo(target.document_element()) || changed;
    if (own == nullptr) {
      copier_.Rewrite(common->target, PartText(target));
    } else if (changed) {
      changed_[own->target] = PartText(target);
    }
  }

  /// Its parts look as they do in the common template, whatever the letter calls by the same names.
  void AttachLetterhead(LetterheadStyles& styles) {
    const auto* common = FindRelated(common_relations_, common_, "numbering");
    const auto* own = common == nullptr ? nullptr : FindRelated(relations_, letter_, "numbering");
    const auto common_lists =
        common == nullptr ? pugi::xml_document() : LoadPartXml(common_.Read(common->target));
    LetterheadNumbering lists(common_lists,
                              own == nullptr ? pugi::xml_document() : LoadPartXml(letter_.Read(own->target)));
    for (const auto& part : letterhead_) {
      const auto document = LoadPartXml(common_.Read(part));
      const auto root = document.document_element();
      bool changed = SettleTheme(root, common_, common_relations_);
      changed = styles.Rename(root) || changed;
      changed = lists.Renumber(root) || changed;
      if (changed) copier_.Rewrite(part, PartText(document));
    }
    lists.Renumber(styles.made());
    const auto text = lists.Text();
    if (text && own == nullptr) {
      copier_.Relate(*common);
      copier_.Rewrite(common->target, *text);
    } else if (text) {
      changed_[own->target] = *text;
    }
  }

  bool AddMissingStyles(pugi::xml_node styles) const {
    const PartNames names(styles);
    std::set<std::string> known;
    std::set<std::string> with_default;
    for (const auto& style : WordChildren(styles, "style")) {
      known.insert(WordAttribute(style, "styleId"));
      if (!WordAttribute(style, "default").empty()) with_default.insert(WordAttribute(style, "type"));
    }
    const auto common = common_styles_.document.document_element();
    bool added = false;
    if (const auto defaults = WordChild(common, "docDefaults");
        defaults && !WordChild(styles, "docDefaults")) {
      CopyWordElement(defaults, styles.prepend_child(pugi::node_element), names);
      added = true;
    }
    for (const auto& style : WordChildren(common, "style")) {
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
  std::vector<pugi::xml_node> sections_;  // of document_
  const PartNames names_;
  DocxPartCopier copier_;
  const std::vector<DocxRelation> relations_;
  const std::vector<DocxRelation> common_relations_;
  const SettledStyles common_styles_;
  bool document_changed_ = false;
  bool heads_ = false;  // the letter has taken the common template's headers
  bool feet_ = false;
  std::set<std::string> letterhead_;  // the header and footer parts taken, by the common template's names
  std::map<std::string, std::string> changed_;  // text by part of the letter
};

}  // namespace

std::optional<std::string> WithCommonTemplate(const DocxPackage& letter, const DocxPackage& common) {
  return platform::While("attaching the common template \"" + common.file_name() + "\"",
                         [&] { return CommonTemplate(letter, common).Attach(); });
}

}  // namespace wordprocessor
