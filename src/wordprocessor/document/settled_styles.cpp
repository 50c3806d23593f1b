#include "wordprocessor/document/settled_styles.h"

#include <algorithm>
#include <string_view>

#include "wordprocessor/docx/property_values.h"
#include "wordprocessor/docx/typeface_names.h"
#include "wordprocessor/docx/word_xml.h"

namespace wordprocessor {
namespace {

constexpr std::string_view kTypefaceAttributes[][2] = {
    {"ascii", "asciiTheme"}, {"hAnsi", "hAnsiTheme"}, {"eastAsia", "eastAsiaTheme"}, {"cs", "cstheme"}};

bool IsOfTheme(const pugi::xml_attribute& attribute) {
  return LocalNameOf(attribute.name()).find("heme") != std::string_view::npos;
}

bool CallsTheme(const pugi::xml_node& node) {
  return std::ranges::any_of(node.attributes(), IsOfTheme) ||
         std::ranges::any_of(node.children(), CallsTheme);
}

bool SettleThemeIn(pugi::xml_node node, const TypefaceStyles& typefaces, const PartNames& names) {
  bool any = false;
  if (IsWordElement(node, "rFonts")) {
    for (const auto& [attribute, theme] : kTypefaceAttributes) {
      const auto called = WordAttribute(node, theme);
      const auto name =
          typefaces.NamesIn([&](std::string_view asked) { return asked == "asciiTheme" ? called : ""; })[0];
      if (!name.empty()) SetWordAttribute(node, attribute, name, names);
    }
  }
  for (auto attribute = node.first_attribute(); attribute;) {
    const auto next = attribute.next_attribute();
    if (IsOfTheme(attribute) && IsWordElement(node, LocalNameOf(node.name()))) {
      any = node.remove_attribute(attribute) || any;
    }
    attribute = next;
  }
  for (const auto& child : node.children()) any = SettleThemeIn(child, typefaces, names) || any;
  return any;
}

}  // namespace

SettledStyles::SettledStyles(const DocxPackage& package, const std::vector<DocxRelation>& relations) {
  document = LoadRelated(package, relations, "styles");
  if (!document.document_element()) return;
  SettleTheme(document.document_element(), package, relations);
  for (const auto& style : WordChildren(document.document_element(), "style")) {
    const auto id = WordAttribute(style, "styleId");
    by_id.try_emplace(id, style);
    const bool is_default = IsOn(WordAttribute(style, "default"), /*without=*/false);
    if (is_default) defaults.try_emplace(WordAttribute(style, "type"), id);
  }
}

bool SettleTheme(pugi::xml_node part, const DocxPackage& package,
                 const std::vector<DocxRelation>& relations) {
  if (!CallsTheme(part)) return false;
  return SettleThemeIn(part, TypefaceStyles(package, relations), PartNames(part));
}

}  // namespace wordprocessor
