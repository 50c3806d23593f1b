#include "wordprocessor/document/letterhead_styles.h"

#include <algorithm>
#include <array>
#include <set>

#include "wordprocessor/docx/property_values.h"
#include "wordprocessor/docx/word_xml.h"

namespace wordprocessor {
namespace {

constexpr auto kLookProperties =
    std::to_array<std::string_view>({"pPr", "rPr", "tblPr", "trPr", "tcPr", "tblStylePr"});

/// What a document's defaults may say, in the order of a style's properties, and what holds where they are
/// silent ("" where that cannot be written).
struct DefaultProperty {
  std::string_view properties;
  std::string_view name;
  std::string_view otherwise;
};

constexpr auto kDefaultProperties = std::to_array<DefaultProperty>({
    {"pPr", "keepNext", "val=0"},
    {"pPr", "keepLines", "val=0"},
    {"pPr", "widowControl", "val=1"},
    {"pPr", "suppressAutoHyphens", "val=0"},
    {"pPr", "spacing", "before=0 after=0 line=240 lineRule=auto"},
    {"pPr", "ind", "left=0 right=0 firstLine=0"},
    {"pPr", "contextualSpacing", "val=0"},
    {"pPr", "jc", "val=left"},
    {"rPr", "rFonts",
     "ascii=Times_New_Roman hAnsi=Times_New_Roman eastAsia=Times_New_Roman cs=Times_New_Roman"},
    {"rPr", "b", "val=0"},
    {"rPr", "bCs", "val=0"},
    {"rPr", "i", "val=0"},
    {"rPr", "iCs", "val=0"},
    {"rPr", "caps", "val=0"},
    {"rPr", "smallCaps", "val=0"},
    {"rPr", "color", "val=auto"},
    {"rPr", "spacing", "val=0"},
    {"rPr", "w", "val=100"},
    {"rPr", "kern", "val=0"},
    {"rPr", "position", "val=0"},
    {"rPr", "sz", "val=20"},
    {"rPr", "szCs", "val=20"},
    {"rPr", "u", "val=none"},
    {"rPr", "lang", ""},
});

using Attributes = std::map<std::string, std::string>;

Attributes Written(std::string_view list) {
  Attributes attributes;
  while (!list.empty()) {
    const auto one = list.substr(0, list.find(' '));
    auto value = std::string(one.substr(one.find('=') + 1));
    std::ranges::replace(value, '_', ' ');
    attributes[std::string(one.substr(0, one.find('=')))] = value;
    list.remove_prefix(std::min(one.size() + 1, list.size()));
  }
  return attributes;
}

void Overlay(Attributes& attributes, const pugi::xml_node& element) {
  for (const auto& attribute : element.attributes()) {
    attributes[std::string(LocalNameOf(attribute.name()))] = attribute.value();
  }
  // An on-off property without a value is on.
  if (element && element.attributes().empty() && attributes.contains("val")) attributes["val"] = "1";
}

pugi::xml_node DefaultsOf(const pugi::xml_node& styles, std::string_view properties) {
  return WordChild(WordChild(WordChild(styles, "docDefaults"), std::string(properties) + "Default"),
                   properties);
}

/// Nothing about who wrote it, nor about prefixes.
std::string TextOf(const pugi::xml_node& element) {
  if (element.type() != pugi::node_element) return {};
  std::set<std::string> attributes;
  for (const auto& attribute : element.attributes()) {
    const auto name = LocalNameOf(attribute.name());
    if (!name.starts_with("rsid")) attributes.insert(std::string(name) + "=" + attribute.value());
  }
  auto text = "<" + std::string(LocalNameOf(element.name()));
  for (const auto& attribute : attributes) text += " " + attribute;
  for (const auto& child : element.children()) text += TextOf(child);
  return text + ">";
}

/// An element without contents says nothing.
std::string LookOf(const pugi::xml_node& style) {
  std::string look;
  for (const auto& child : style.children()) {
    if (std::ranges::find(kLookProperties, LocalNameOf(child.name())) == kLookProperties.end()) continue;
    if (child.first_child()) look += TextOf(child);
  }
  return look;
}

std::string DefaultsText(const pugi::xml_node& styles) {
  std::string text;
  for (const std::string_view properties : {"pPr", "rPr"}) {
    const auto defaults = DefaultsOf(styles, properties);
    if (defaults.first_child()) text += TextOf(defaults);
  }
  return text;
}

pugi::xml_node Found(const SettledStyles& styles, const std::string& id) {
  const auto found = styles.by_id.find(id);
  return found == styles.by_id.end() ? pugi::xml_node() : found->second;
}

std::string BaseOf(const pugi::xml_node& style) {
  return WordAttribute(WordChild(style, "basedOn"), "val");
}

/// The properties' child of that name of the nearest style below that has one.
pugi::xml_node Inherited(const pugi::xml_node& style, std::string_view name) {
  auto below = style;
  for (int depth = 0; depth < kMostStylesBelow; ++depth) {
    const auto base = BaseOf(below);
    below = style.parent().find_child(
        [&](const pugi::xml_node& one) { return WordAttribute(one, "styleId") == base; });
    if (const auto found = WordChild(WordChild(below, "pPr"), name)) return found;
  }
  return {};
}

/// The office takes what a style's w:spacing or w:ind leaves out from the document's defaults, not from the
/// style below it, and w:contextualSpacing is to it a part of the former (LibreOffice 7.4).
void Complete(const pugi::xml_node& style, const PartNames& names) {
  auto properties = WordChild(style, "pPr");
  for (const std::string_view name : {"spacing", "ind"}) {
    auto own = WordChild(properties, name);
    const auto contextual = WordChild(properties, "contextualSpacing");
    if (!own && contextual && name == "spacing") {
      own = properties.insert_child_before(names.Element(name).c_str(), contextual);
    }
    if (!own) continue;
    for (const auto& attribute : Inherited(style, name).attributes()) {
      const auto local_name = LocalNameOf(attribute.name());
      const bool hangs = local_name == "firstLine" && !WordAttribute(own, "hanging").empty();
      if (WordAttribute(own, local_name).empty() && !hangs) {
        SetWordAttribute(own, local_name, attribute.value(), names);
      }
    }
  }
}

/// The child of that name, made as the first one where it is not there.
pugi::xml_node FirstChild(pugi::xml_node parent, std::string_view local_name, const PartNames& names) {
  if (const auto child = WordChild(parent, local_name)) return child;
  return parent.prepend_child(names.Element(local_name).c_str());
}

}  // namespace

LetterheadStyles::LetterheadStyles(const SettledStyles& common, const SettledStyles& letter)
    : common_(common), letter_(letter) {
  const auto root = common.document.document_element();
  auto copy = made_.append_child(root ? root.name() : "styles");
  for (const auto& attribute : root.attributes()) copy.append_copy(attribute);
}

bool LetterheadStyles::Rename(pugi::xml_node part) {
  std::vector<Use> uses;
  FindUses(part, "", uses);
  if (std::ranges::all_of(uses, [&](const Use& use) { return LooksTheSame(use); })) return false;
  const PartNames names(part);
  for (const auto& use : uses) {
    const auto own = OwnStyle(use.type, use.style, use.table);
    if (own.empty()) continue;
    auto named = use.node;
    if (use.type == "paragraph") named = FirstChild(FirstChild(use.node, "pPr", names), "pStyle", names);
    if (use.type == "table") named = FirstChild(FirstChild(use.node, "tblPr", names), "tblStyle", names);
    SetWordAttribute(named, "val", own, names);
  }
  return true;
}

void LetterheadStyles::FindUses(pugi::xml_node node, const std::string& table, std::vector<Use>& uses) const {
  for (const auto& child : node.children()) {
    auto around = table;
    if (IsWordElement(child, "p")) {
      const auto style = WordAttribute(WordChild(WordChild(child, "pPr"), "pStyle"), "val");
      uses.push_back({child, "paragraph", Found(common_, style) ? style : "", table});
    } else if (IsWordElement(child, "tbl")) {
      const auto style = WordAttribute(WordChild(WordChild(child, "tblPr"), "tblStyle"), "val");
      uses.push_back({child, "table", Found(common_, style) ? style : "", ""});
      around = uses.back().style.empty() ? DefaultOf("table") : style;
    } else if (IsWordElement(child, "rStyle") && Found(common_, WordAttribute(child, "val"))) {
      uses.push_back({child, "character", WordAttribute(child, "val"), ""});
    } else if (IsWordElement(child, "txbxContent")) {
      around.clear();
    }
    FindUses(child, around, uses);
  }
}

std::string LetterheadStyles::DefaultOf(const std::string& type) const {
  const auto found = common_.defaults.find(type);
  return found == common_.defaults.end() ? "" : found->second;
}

/// What the letter lacks it gets from the common template, under the same identifier.
bool LetterheadStyles::LooksTheSame(const Use& use) const {
  const auto own_defaults = letter_.document.document_element();
  if (WordChild(own_defaults, "docDefaults") &&
      DefaultsText(own_defaults) != DefaultsText(common_.document.document_element())) {
    return false;
  }
  auto style = use.style;
  if (style.empty()) {
    style = DefaultOf(use.type);
    const auto own = letter_.defaults.find(use.type);
    if (own != letter_.defaults.end() && own->second != style) return false;
  }
  for (int depth = 0; !style.empty() && depth < kMostStylesBelow; ++depth) {
    const auto common = Found(common_, style);
    const auto letter = Found(letter_, style);
    const auto look = LookOf(common);
    if (look.find("<numPr") != look.npos) return false;
    if (letter && (LookOf(letter) != look || BaseOf(letter) != BaseOf(common))) return false;
    style = BaseOf(common);
  }
  return true;
}

std::string LetterheadStyles::OwnStyle(const std::string& type, const std::string& style,
                                       const std::string& table) {
  const auto wanted = style.empty() ? DefaultOf(type) : style;
  const auto like = Found(common_, wanted);
  if (!like) return type == "paragraph" ? BaseStyle(table) : "";
  const auto key = type + " " + wanted + " " + table;
  if (const auto known = own_.find(key); known != own_.end()) return known->second;
  auto made = AddStyle(key, type, wanted);
  const auto own = own_.at(key);  // before its base is made: a ring ends here
  const PartNames names(made_.document_element());
  auto base = BaseOf(like);
  const bool root = base.empty() || !Found(common_, base);
  base = root ? (type == "paragraph" ? BaseStyle(table) : "") : OwnStyle(type, base, table);
  if (!base.empty()) {
    SetWordAttribute(made.append_child(names.Element("basedOn").c_str()), "val", base, names);
  }
  for (const auto& child : like.children()) {
    if (std::ranges::find(kLookProperties, LocalNameOf(child.name())) != kLookProperties.end()) {
      made.append_copy(child);
    }
  }
  Complete(made, names);
  return own;
}

/// The common template's defaults, where the letter's are others. A table's style goes before them.
std::string LetterheadStyles::BaseStyle(const std::string& table) {
  const auto key = "base " + table;
  if (const auto known = own_.find(key); known != own_.end()) return known->second;
  auto made = AddStyle(key, "paragraph", "Text");
  for (const std::string_view properties : {"pPr", "rPr"}) AddDefaults(made, properties, table);
  return own_.at(key);
}

pugi::xml_node LetterheadStyles::AddStyle(const std::string& key, const std::string& type,
                                          const std::string& like) {
  const auto wanted = "Letterhead" + like;
  auto id = wanted;
  const auto taken = [&] {
    return Found(common_, id) || Found(letter_, id) ||
           std::ranges::any_of(own_, [&](const auto& known) { return known.second == id; });
  };
  for (int number = 2; taken(); ++number) id = wanted + std::to_string(number);
  own_[key] = id;
  const PartNames names(made_.document_element());
  auto style = made_.document_element().append_child(names.Element("style").c_str());
  SetWordAttribute(style, "type", type, names);
  SetWordAttribute(style, "customStyle", "1", names);
  SetWordAttribute(style, "styleId", id, names);
  SetWordAttribute(style.append_child(names.Element("name").c_str()), "val", id, names);
  return style;
}

void LetterheadStyles::AddDefaults(pugi::xml_node style, std::string_view properties,
                                   const std::string& table) const {
  const PartNames names(made_.document_element());
  pugi::xml_node added;
  for (const auto& property : kDefaultProperties) {
    if (property.properties != properties) continue;
    auto wanted = Written(property.otherwise);
    auto there = wanted;
    Overlay(wanted, WordChild(DefaultsOf(common_.document.document_element(), properties), property.name));
    Overlay(there, WordChild(DefaultsOf(letter_.document.document_element(), properties), property.name));
    if (wanted == there || wanted.empty()) continue;
    std::vector<pugi::xml_node> tables;
    for (auto found = Found(common_, table); found && tables.size() < kMostStylesBelow;
         found = Found(common_, BaseOf(found))) {
      tables.insert(tables.begin(), found);
    }
    for (const auto& one : tables) Overlay(wanted, WordChild(WordChild(one, properties), property.name));
    if (!added) added = style.append_child(names.Element(properties).c_str());
    auto element = added.append_child(names.Element(property.name).c_str());
    for (const auto& [name, value] : wanted) SetWordAttribute(element, name, value, names);
  }
}

bool LetterheadStyles::AddTo(pugi::xml_node styles) const {
  const PartNames names(styles);
  for (const auto& style : made_.document_element().children()) {
    CopyWordElement(style, styles.append_child(pugi::node_element), names);
  }
  return !own_.empty();
}

}  // namespace wordprocessor
