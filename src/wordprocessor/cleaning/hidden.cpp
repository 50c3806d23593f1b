#include "wordprocessor/cleaning/hidden.h"

#include <pugixml.hpp>

#include "wordprocessor/docx/blocks.h"
#include "wordprocessor/docx/property_values.h"
#include "wordprocessor/docx/relations.h"
#include "wordprocessor/docx/word_xml.h"

namespace wordprocessor {
namespace {

std::optional<bool> HidesIn(const pugi::xml_node& run_properties) {
  const auto vanish = WordChild(run_properties, "vanish");
  return vanish ? std::optional(IsOn(WordAttribute(vanish, "val"), /*without=*/true)) : std::nullopt;
}

class HiddenSearch {
 public:
  HiddenSearch(const DocxTree& tree, const HiddenStyles& styles) : tree_(tree), styles_(styles) {}

  std::vector<NodeId> Run() && {
    if (styles_.any() || AnyVanish()) Visit(tree_.root());
    return std::move(hidden_);
  }

 private:
  bool AnyVanish() const {
    for (NodeId node = 0; node < tree_.size(); ++node) {
      if (tree_[node].kind == DocxKind::kVanish) return true;
    }
    return false;
  }

  void Visit(NodeId node) {
    if (tree_[node].kind == DocxKind::kRun && IsHidden(node)) {
      hidden_.push_back(node);
      return;
    }
    for (auto child = tree_[node].first_child; child != kNoNode; child = tree_[child].next) Visit(child);
  }

  bool IsHidden(NodeId run) const {
    const auto properties = tree_.ChildOfKind(run, DocxKind::kRunProperties);
    if (properties != kNoNode) {
      const auto vanish = tree_.ChildOfKind(properties, DocxKind::kVanish);
      if (vanish != kNoNode) return IsOn(tree_.Attribute(vanish, "val"), /*without=*/true);
    }
    if (!styles_.any()) return false;
    const auto paragraph = ParagraphOf(tree_, run);
    const auto paragraph_properties =
        paragraph == kNoNode ? kNoNode : tree_.ChildOfKind(paragraph, DocxKind::kParagraphProperties);
    return styles_.Hide(StyleNamed(tree_, paragraph_properties, "pStyle"),
                        StyleNamed(tree_, properties, "rStyle"));
  }

  const DocxTree& tree_;
  const HiddenStyles& styles_;
  std::vector<NodeId> hidden_;
};

}  // namespace

HiddenStyles::HiddenStyles(const DocxPackage& package, const std::string& main_part) {
  const auto document = LoadRelated(package, ReadRelations(package, main_part), "styles");
  const auto root = document.document_element();
  const auto defaults = WordChild(WordChild(WordChild(root, "docDefaults"), "rPrDefault"), "rPr");
  by_default_ = any_ = HidesIn(defaults).value_or(false);
  for (const auto& style : WordChildren(root, "style")) {
    const auto id = WordAttribute(style, "styleId");
    const auto hides = HidesIn(WordChild(style, "rPr"));
    any_ = any_ || hides.value_or(false);
    styles_.try_emplace(id, Style{WordAttribute(WordChild(style, "basedOn"), "val"), hides});
    if (!IsOn(WordAttribute(style, "default"), /*without=*/false)) continue;
    const auto type = WordAttribute(style, "type");
    if (type == "paragraph") default_paragraph_ = id;
    if (type == "character") default_character_ = id;
  }
}

bool HiddenStyles::Hides(const std::string& style) const {
  auto found = styles_.find(style);
  for (int depth = 0; found != styles_.end() && depth < kMostStylesBelow; ++depth) {
    if (found->second.hides) return *found->second.hides;
    found = styles_.find(found->second.based_on);
  }
  return false;
}

bool HiddenStyles::Hide(const std::string& paragraph_style, const std::string& character_style) const {
  const bool by_paragraph = Hides(paragraph_style.empty() ? default_paragraph_ : paragraph_style);
  const bool by_character = Hides(character_style.empty() ? default_character_ : character_style);
  return by_default_ || by_paragraph != by_character;
}

std::vector<NodeId> FindHiddenRuns(const DocxTree& tree, const HiddenStyles& styles) {
  return HiddenSearch(tree, styles).Run();
}

}  // namespace wordprocessor
