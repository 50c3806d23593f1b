#include "wordprocessor/cleaning/properties.h"

#include <algorithm>
#include <filesystem>
#include <set>

#include <pugixml.hpp>

#include "platform/text.h"
#include "wordprocessor/docx/blocks.h"
#include "wordprocessor/docx/escape.h"
#include "wordprocessor/docx/relations.h"
#include "wordprocessor/docx/tree_reader.h"
#include "wordprocessor/docx/word_xml.h"

namespace wordprocessor {
namespace {

// What letters are laid out in where nothing else is said; as wordprocessor/office/profile.cpp has it.
constexpr std::string_view kUsualLanguage = "en-US";

constexpr std::string_view kUsualPart = "docProps/core.xml";

/// The text of the property of that name, whatever its prefix.
std::string PropertyIn(const pugi::xml_document& document, std::string_view local_name) {
  for (const auto& property : document.document_element().children()) {
    if (LocalNameOf(property.name()) == local_name) return std::string(platform::Trim(property.text().get()));
  }
  return {};
}

std::string LanguageIn(const pugi::xml_document& styles) {
  const auto defaults =
      WordChild(WordChild(WordChild(styles.document_element(), "docDefaults"), "rPrDefault"), "rPr");
  return WordAttribute(WordChild(defaults, "lang"), "val");
}

std::set<std::string> HeadingStyles(const pugi::xml_document& styles) {
  std::set<std::string> headings;
  for (const auto& style : WordChildren(styles.document_element(), "style")) {
    const auto name = platform::LowerCase(WordAttribute(WordChild(style, "name"), "val"));
    const bool outlined = static_cast<bool>(WordChild(WordChild(style, "pPr"), "outlineLvl"));
    if (outlined || name == "title" || name.starts_with("heading ")) {
      headings.insert(WordAttribute(style, "styleId"));
    }
  }
  return headings;
}

class HeadingSearch {
 public:
  HeadingSearch(const DocxTree& tree, std::set<std::string> styles)
      : tree_(tree), styles_(std::move(styles)) {}

  std::string Find(NodeId node) const {
    if (tree_[node].kind == DocxKind::kParagraph) return IsHeading(node) ? OwnWords(node) : std::string();
    for (auto child = tree_[node].first_child; child != kNoNode; child = tree_[child].next) {
      if (auto text = Find(child); !text.empty()) return text;
    }
    return {};
  }

 private:
  bool IsHeading(NodeId paragraph) const {
    const auto properties = tree_.ChildOfKind(paragraph, DocxKind::kParagraphProperties);
    if (properties == kNoNode) return false;
    for (auto child = tree_[properties].first_child; child != kNoNode; child = tree_[child].next) {
      const auto name = LocalNameOf(tree_[child].name());
      if (name == "outlineLvl" && tree_.Attribute(child, "val") != "9") return true;
      if (name == "pStyle" && styles_.contains(Unescaped(tree_.Attribute(child, "val")))) return true;
    }
    return false;
  }

  /// "" where a letter's value stands in it.
  std::string OwnWords(NodeId node) const {
    std::string text;
    const bool whole = Append(node, text);
    return whole ? std::string(platform::Trim(text)) : std::string();
  }

  bool Append(NodeId node, std::string& text) const {
    const auto kind = tree_[node].kind;
    if (kind == DocxKind::kBookmarkStart) return tree_.BookmarkOf(node).name.starts_with('_');
    if (IsProperties(kind) || kind == DocxKind::kTextBox) return true;
    if (kind == DocxKind::kTab || kind == DocxKind::kBreak) text += ' ';
    const bool shown = kind == DocxKind::kMarkup && tree_[tree_[node].parent].kind == DocxKind::kText;
    if (shown) text += Unescaped(tree_[node].markup);
    for (auto child = tree_[node].first_child; child != kNoNode; child = tree_[child].next) {
      if (!Append(child, text)) return false;
    }
    return true;
  }

  const DocxTree& tree_;
  const std::set<std::string> styles_;
};

void AppendProperty(std::string& text, std::string_view name, std::string_view value) {
  if (value.empty()) return;
  text.append("<").append(name).append(">");
  AppendEscaped(text, value);
  text.append("</").append(name).append(">");
}

}  // namespace

DocumentProperties ReadProperties(const DocxPackage& package, const std::string& main_part,
                                  const DocxTree& body) {
  DocumentProperties properties{std::string(kUsualPart), {}, {}};
  for (const auto& relation : ReadRelations(package, "")) {
    if (relation.kind != "core-properties" || !LeadsToPart(relation, package)) continue;
    properties.part = relation.target;
    properties.title = PropertyIn(LoadPartXml(package.Read(relation.target)), "title");
  }
  const auto styles = LoadRelated(package, ReadRelations(package, main_part), "styles");
  properties.language = LanguageIn(styles);
  if (properties.language.empty()) properties.language = kUsualLanguage;
  if (properties.title.empty())
    properties.title = HeadingSearch(body, HeadingStyles(styles)).Find(body.root());
  if (properties.title.empty()) {
    properties.title = std::filesystem::path(package.file_name()).stem().string();
  }
  return properties;
}

std::string PropertiesText(const DocumentProperties& properties, std::string_view office) {
  std::string text =
      "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
      "<cp:coreProperties"
      " xmlns:cp=\"http://schemas.openxmlformats.org/package/2006/metadata/core-properties\""
      " xmlns:dc=\"http://purl.org/dc/elements/1.1/\">";
  AppendProperty(text, "dc:title", properties.title);
  AppendProperty(text, "dc:creator", office);
  AppendProperty(text, "dc:language", properties.language);
  return text.append("</cp:coreProperties>");
}

}  // namespace wordprocessor
