#include "wordprocessor/document/common_pages.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "wordprocessor/document/sections.h"
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

bool SetsEvenPagesApart(const CommonPages::Side& side) {
  const auto document = LoadRelated(side.package, side.relations, "settings");
  return static_cast<bool>(WordChild(document.document_element(), "evenAndOddHeaders"));
}

std::string RelationIdOf(const pugi::xml_node& reference) {
  for (const auto& attribute : reference.attributes()) {
    const std::string_view name = attribute.name();
    if (LocalNameOf(name) == "id" && name.size() > 3) return attribute.value();
  }
  return {};
}

/// A page across keeps the size and the margins that its wide table needs.
bool LiesOtherwise(const pugi::xml_node& section, const pugi::xml_node& common) {
  return PageSizeOf(section).IsAcross() != PageSizeOf(common).IsAcross();
}

}  // namespace

CommonPages::CommonPages(Side letter, Side common, DocxPartCopier& copier)
    : letter_(letter), common_(common), names_(letter.document.document_element()), copier_(copier) {}

bool CommonPages::Attach() {
  const auto common_sections = SectionsOf(common_.document);
  const auto body = WordChild(letter_.document.document_element(), "body");
  if (common_sections.empty() || !body) return false;
  sections_ = SectionsOf(letter_.document);
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
  return changed_;
}

/// Later sections show the headers of the first one where they have none.
void CommonPages::AttachHeaders(const pugi::xml_node& common) {
  const bool headers = !AnySectionHas(sections_, "headerReference");
  const bool footers = !AnySectionHas(sections_, "footerReference");
  const bool first_page = headers && footers && WordChild(common, "titlePg");
  if (headers && footers && !first_page) {
    // Nothing of the letter's own is on it.
    for (auto& one : sections_) changed_ = one.remove_child(WordChild(one, "titlePg")) || changed_;
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
bool CommonPages::AttachReferences(const pugi::xml_node& common, std::string_view kind, bool first_page) {
  bool any = AttachReference(common, kind, "default", "default");
  if (first_page || AnySectionHas(sections_, "titlePg")) {
    any = AttachReference(common, kind, "first", WordChild(common, "titlePg") ? "first" : "default") || any;
  }
  if (SetsEvenPagesApart(letter_)) {
    const bool apart = SetsEvenPagesApart(common_);
    any = AttachReference(common, kind, "even", apart ? "even" : "default") || any;
  }
  return any;
}

bool CommonPages::AttachReference(const pugi::xml_node& common, std::string_view kind, const char* type,
                                  std::string_view common_type) {
  for (const auto& reference : WordChildren(common, kind)) {
    const auto relation = std::ranges::find(common_.relations, RelationIdOf(reference), &DocxRelation::id);
    if (WordAttribute(reference, "type") != common_type) continue;
    if (relation == common_.relations.end() || !common_.package.Has(relation->target)) continue;
    auto added = AddToSection(sections_.front(), kind, names_);
    added.append_attribute(names_.Attribute("type").c_str()).set_value(type);
    added.append_attribute(names_.Relation("id").c_str()).set_value(copier_.Relate(*relation).c_str());
    letterhead_.insert(relation->target);
    return changed_ = true;
  }
  return false;
}

/// The letterhead's tabs and its place on the sheet are made for its own page size.
void CommonPages::AttachPageSize(pugi::xml_node section, const pugi::xml_node& common) {
  const auto source = WordChild(common, "pgSz");
  const auto own = WordChild(section, "pgSz");
  if (!heads_ || !source || !own || LiesOtherwise(section, common)) return;
  section.remove_child(own);
  CopyWordElement(source, AddToSection(section, "pgSz", names_), names_);
  changed_ = true;
}

void CommonPages::AttachPageSetup(const pugi::xml_node& section, const pugi::xml_node& common) {
  for (const auto name : kPageSetup) {
    const auto source = WordChild(common, name);
    if (!source || WordChild(section, name)) continue;
    CopyWordElement(source, AddToSection(section, name, names_), names_);
    changed_ = true;
  }
}

/// A letterhead stands where its own margins put it, and the text below it, whatever the letter says: word
/// processors write margins into every document, LibreOffice even distances of 0 where it sees no header.
void CommonPages::AttachMargins(const pugi::xml_node& section, const pugi::xml_node& common) {
  const auto source = WordChild(common, "pgMar");
  auto target = WordChild(section, "pgMar");
  if (!source || !target) return;
  const bool as_common = !LiesOtherwise(section, common);
  for (const auto& margin : kMargins) {
    const bool wanted = (margin.with_head && heads_) || (margin.with_foot && feet_);
    const auto value = WordAttribute(source, margin.name);
    if (!wanted || (margin.of_pages_alike && !as_common) || value.empty()) continue;
    SetWordAttribute(target, margin.name, value, names_);
    changed_ = true;
  }
}

}  // namespace wordprocessor
