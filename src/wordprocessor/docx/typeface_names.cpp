#include "wordprocessor/docx/typeface_names.h"

#include <algorithm>
#include <utility>

#include "wordprocessor/docx/property_values.h"
#include "wordprocessor/docx/word_xml.h"

namespace wordprocessor {
namespace {

// What a word processor sets text in where neither text nor styles name anything.
constexpr const char* kTypefaceOfNobody = "Times New Roman";

struct ScriptAttribute {
  std::string_view name;
  std::string_view theme;
  std::string_view theme_element;
  std::string_view theme_suffix;
};

// The office takes a Latin text's typeface from "ascii" alone (LibreOffice 7.4); the theme's wins.
constexpr auto kScriptAttributes = std::to_array<ScriptAttribute>({
    {"ascii", "asciiTheme", "latin", "HAnsi Ascii"},
    {"eastAsia", "eastAsiaTheme", "ea", "EastAsia"},
    {"cs", "cstheme", "cs", "Bidi"},
});
static_assert(kScriptAttributes.size() == kScripts);

struct Range {
  char32_t first;
  char32_t last;
  Script script;
};

// The blocks of Unicode that are not written with Latin's typeface; narrow ones of no living language are
// left out.
constexpr auto kRanges = std::to_array<Range>({
    {0x0590, 0x08FF, Script::kComplex},    // Hebrew, Arabic
    {0x0900, 0x109F, Script::kComplex},    // of India, Thai, Tibetan, Burmese
    {0x1100, 0x11FF, Script::kEastAsian},  // Korean
    {0x1780, 0x17FF, Script::kComplex},    // Khmer
    {0x2E80, 0xA4CF, Script::kEastAsian},
    {0xA960, 0xA97F, Script::kEastAsian},
    {0xAC00, 0xD7FF, Script::kEastAsian},
    {0xF900, 0xFAFF, Script::kEastAsian},
    {0xFB1D, 0xFDFF, Script::kComplex},
    {0xFE30, 0xFE4F, Script::kEastAsian},
    {0xFE70, 0xFEFE, Script::kComplex},
    {0xFF00, 0xFFEF, Script::kEastAsian},
    {0x20000, 0x3FFFF, Script::kEastAsian},
});

/// The character that starts at `place`, which moves on; the text is UTF-8.
char32_t NextCharacter(std::string_view text, std::size_t& place) {
  const auto byte = static_cast<unsigned char>(text[place++]);
  const auto more = byte < 0xC0 ? 0U : byte < 0xE0 ? 1U : byte < 0xF0 ? 2U : 3U;
  auto character = static_cast<char32_t>(more == 0 ? byte : byte & (0x3FU >> more));
  for (auto i = 0U; i < more && place < text.size(); ++i) {
    character = character << 6U | (static_cast<unsigned char>(text[place++]) & 0x3FU);
  }
  return character;
}

bool IsBlankCharacter(char32_t character) {
  return character <= U' ' || character == 0xA0 || character == 0x3000;
}

/// The first of the names that stand in one place, separated by semicolons: the layout looks for this one.
std::string FirstName(std::string names) {
  return names.substr(0, names.find(';'));
}

pugi::xml_node Named(const pugi::xml_node& parent, std::string_view local_name) {
  return parent.find_child(
      [&](const pugi::xml_node& child) { return LocalNameOf(child.name()) == local_name; });
}

}  // namespace

std::array<bool, kScripts> ScriptsIn(std::string_view text) {
  std::array<bool, kScripts> scripts = {};
  for (std::size_t place = 0; place < text.size();) {
    const auto character = NextCharacter(text, place);
    if (IsBlankCharacter(character)) continue;
    const auto range = std::ranges::find_if(kRanges, [&](const Range& candidate) {
      return candidate.first <= character && character <= candidate.last;
    });
    scripts[static_cast<std::size_t>(range == kRanges.end() ? Script::kLatin : range->script)] = true;
  }
  return scripts;
}

TypefaceStyles::TypefaceStyles(const DocxPackage& package, const std::vector<DocxRelation>& relations) {
  ReadTheme(LoadRelated(package, relations, "theme").document_element());
  const auto document = LoadRelated(package, relations, "styles");
  const auto root = document.document_element();
  if (!root) return;
  defaults_ = NamesOfRun(WordChild(WordChild(WordChild(root, "docDefaults"), "rPrDefault"), "rPr"));
  if (defaults_[0].empty()) defaults_[0] = kTypefaceOfNobody;
  for (const auto& style : WordChildren(root, "style")) {
    const auto id = WordAttribute(style, "styleId");
    styles_.try_emplace(
        id, Style{WordAttribute(WordChild(style, "basedOn"), "val"), NamesOfRun(WordChild(style, "rPr"))});
    const bool is_default = IsOn(WordAttribute(style, "default"), /*without=*/false);
    if (is_default && WordAttribute(style, "type") == "paragraph") default_paragraph_ = id;
  }
}

void TypefaceStyles::ReadTheme(const pugi::xml_node& root) {
  const auto scheme = Named(Named(root, "themeElements"), "fontScheme");
  for (const auto* kind : {"major", "minor"}) {
    const auto fonts = Named(scheme, std::string(kind) + "Font");
    for (const auto& script : kScriptAttributes) {
      const std::string name = Named(fonts, script.theme_element).attribute("typeface").value();
      auto suffixes = script.theme_suffix;
      for (auto end = suffixes.find(' '); !suffixes.empty(); end = suffixes.find(' ')) {
        theme_[kind + std::string(suffixes.substr(0, end))] = name;
        suffixes.remove_prefix(end == suffixes.npos ? suffixes.size() : end + 1);
      }
    }
  }
}

TypefaceNames TypefaceStyles::NamesIn(const std::function<std::string(std::string_view)>& attribute) const {
  TypefaceNames names;
  for (std::size_t i = 0; i < kScripts; ++i) {
    const auto of_theme = theme_.find(attribute(kScriptAttributes[i].theme));
    names[i] = FirstName(of_theme == theme_.end() ? attribute(kScriptAttributes[i].name) : of_theme->second);
  }
  return names;
}

TypefaceNames TypefaceStyles::NamesOfRun(const pugi::xml_node& run_properties) const {
  const auto fonts = WordChild(run_properties, "rFonts");
  return NamesIn([&](std::string_view name) { return WordAttribute(fonts, name); });
}

std::string TypefaceStyles::Of(const std::string& style, Script script) const {
  auto found = styles_.find(style);
  for (int depth = 0; found != styles_.end() && depth < kMostStylesBelow; ++depth) {
    const auto& name = found->second.names[static_cast<std::size_t>(script)];
    if (!name.empty()) return name;
    found = styles_.find(found->second.based_on);
  }
  return {};
}

}  // namespace wordprocessor
