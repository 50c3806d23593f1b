#include "wordprocessor/authoring/placeholders.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "platform/agreed/field_names.h"
#include "platform/text.h"
#include "wordprocessor/authoring/read_template.h"
#include "wordprocessor/bookmarks/index.h"
#include "wordprocessor/docx/blocks.h"
#include "wordprocessor/docx/runs.h"

namespace wordprocessor {
namespace {

// Longer ones are sentences in brackets.
constexpr std::size_t kLongestPlaceholder = 100;

struct Placeholder {
  std::string text;
  std::vector<NodeId> pieces;  ///< the text elements it stands in
  std::size_t in_first = 0;    ///< where it begins in the first of them, in bytes
  std::size_t in_last = 0;     ///< where it ends in the last
  std::uint32_t first_content = 0;
  std::uint32_t end_content = 0;
};

struct Miss {
  enum class How : std::uint8_t { kRightBefore, kBlankBetween, kEndsInside };

  BookmarkRange range;
  Placeholder placeholder;
  How how;
};

class MissSearch {
 public:
  MissSearch(const DocxTree& tree, const HiddenStyles& styles, const std::vector<TemplateField>& fields)
      : tree_(tree), fields_(fields), index_(tree) {
    for (const auto run : FindHiddenRuns(tree, styles)) hidden_.insert(run);
  }

  std::vector<Miss> Run() const {
    std::vector<Miss> misses;
    for (const auto& range : index_.ranges) {
      const auto* field = FieldFor(range.name, fields_);
      const bool table = field != nullptr && field->kind == TemplateField::Kind::kTable;
      if (!range.has_end() || table) continue;
      auto miss = MissOf(range);
      if (miss && !BelongsToAnother(range, miss->placeholder)) misses.push_back(*std::move(miss));
    }
    return misses;
  }

 private:
  /// What a bookmark holds itself.
  enum class Own : std::uint8_t { kNothing, kWords, kBeginning, kEnough };

  /// An optional paragraph holds its wording, and a bookmark around deleted text goes with it.
  Own OwnOf(const BookmarkRange& range) const {
    std::string own;
    bool goes = !range.empty();
    for (auto i = range.first_content; i < range.end_content; ++i) {
      if (!AppendText(index_.contents[i], own, nullptr)) return Own::kEnough;
      goes = goes && IsGone(index_.contents[i].node);
    }
    if (goes) return Own::kEnough;
    const auto words = platform::TrimBlanks(own);
    if (words.empty()) return Own::kNothing;
    if (platform::IsParagraphField(range.name) || words.find(']') != words.npos) return Own::kEnough;
    if (words.starts_with('[')) return Own::kBeginning;
    return words.find('[') == words.npos ? Own::kWords : Own::kEnough;
  }

  std::optional<Miss> MissOf(const BookmarkRange& range) const {
    const auto own = OwnOf(range);
    if (own == Own::kEnough) return std::nullopt;
    const bool begun = own == Own::kBeginning;
    std::size_t blanks = 0;
    auto placeholder = PlaceholderFrom(begun ? range.first_content : range.end_content, range, blanks);
    if (!placeholder || (own == Own::kWords && blanks > 0)) return std::nullopt;
    const auto how = begun        ? Miss::How::kEndsInside
                     : blanks > 0 ? Miss::How::kBlankBetween
                                  : Miss::How::kRightBefore;
    return Miss{range, *std::move(placeholder), how};
  }

  /// Whether no letter shows the content.
  bool IsGone(NodeId content) const {
    return hidden_.contains(content) || tree_.Ancestor(content, DocxKind::kDeleted) != kNoNode;
  }

  /// Returns false where the content is more than text. With `pieces` it ends with the first "]".
  bool AppendText(const BookmarkIndex::Content& content, std::string& text,
                  std::vector<NodeId>* pieces) const {
    if (IsGone(content.node)) return true;
    if (content.field != kNoNode || tree_[content.node].kind != DocxKind::kRun) return false;
    for (auto piece = tree_[content.node].first_child; piece != kNoNode; piece = tree_[piece].next) {
      const auto kind = tree_[piece].kind;
      if (kind == DocxKind::kText) {
        text += TextOfElement(tree_, piece);
        if (pieces != nullptr) pieces->push_back(piece);
      } else if (kind == DocxKind::kTab ||
                 (kind == DocxKind::kBreak && tree_.Attribute(piece, "type").empty())) {
        if (pieces != nullptr && platform::IsBlank(text)) return false;
        text += ' ';
      } else if (HasContent(tree_, piece)) {
        return false;
      }
      if (pieces != nullptr && text.find(']') != text.npos) return true;
    }
    return true;
  }

  /// The placeholder that begins with this content, or behind some blanks, whose bytes are told.
  std::optional<Placeholder> PlaceholderFrom(std::uint32_t first, const BookmarkRange& range,
                                             std::size_t& blanks) const {
    Placeholder found;
    found.first_content = first;
    NodeId paragraph = kNoNode;
    for (auto i = first; i < index_.contents.size(); ++i) {
      const auto own = ParagraphOf(tree_, index_.contents[i].node);
      if (paragraph == kNoNode ? !IsBesideItsEnd(range, own) : own != paragraph) return std::nullopt;
      paragraph = own;
      if (!AppendText(index_.contents[i], found.text, &found.pieces)) return std::nullopt;
      const auto words = platform::TrimBlanks(found.text);
      if (!words.empty() && !words.starts_with('[')) return std::nullopt;
      const auto end = found.text.find(']');
      if (end == found.text.npos) continue;
      blanks = found.text.find('[');
      found.in_last = TextOfElement(tree_, found.pieces.back()).size() - (found.text.size() - (end + 1));
      found.text = found.text.substr(blanks, end + 1 - blanks);
      found.end_content = i + 1;
      DropBlankPieces(found, blanks);
      return IsPlaceholder(found.text) ? std::optional(found) : std::nullopt;
    }
    return std::nullopt;
  }

  void DropBlankPieces(Placeholder& found, std::size_t blanks) const {
    auto first = found.pieces.begin();
    for (; blanks >= TextOfElement(tree_, *first).size(); ++first) {
      blanks -= TextOfElement(tree_, *first).size();
    }
    found.pieces.erase(found.pieces.begin(), first);
    found.in_first = blanks;
  }

  /// Whether `paragraph` is the one the bookmark ends in; marks between paragraphs mean the next one.
  bool IsBesideItsEnd(const BookmarkRange& range, NodeId paragraph) const {
    if (paragraph == kNoNode) return false;
    const auto own = ParagraphOf(tree_, range.end);
    if (own != kNoNode) return own == paragraph;
    auto next = tree_[range.end].next;
    while (next != kNoNode && IsBookmarkMark(tree_[next].kind)) next = tree_[next].next;
    return next == paragraph;
  }

  /// Numbers in brackets are references.
  static bool IsPlaceholder(std::string_view text) {
    const auto inside = text.substr(1, text.size() - 2);
    return text.size() <= kLongestPlaceholder && inside.find('[') == inside.npos &&
           inside.find_first_not_of("0123456789 ,;.-") != inside.npos && !platform::IsBlank(inside);
  }

  /// A bookmark around much more that nothing replaces leaves its contents to others: optional paragraphs,
  /// rows, sections that programs mark.
  bool BelongsToAnother(const BookmarkRange& range, const Placeholder& placeholder) const {
    return std::ranges::any_of(index_.ranges, [&](const BookmarkRange& other) {
      if (!other.has_end() || other.start == range.start) return false;
      const auto* field = FieldFor(other.name, fields_);
      const bool replaced = field != nullptr && field->kind != TemplateField::Kind::kTable &&
                            !platform::IsParagraphField(other.name);
      if (!replaced && other.Holds(range)) return false;
      const auto end = std::min(other.end_content, placeholder.end_content);
      for (auto i = std::max(other.first_content, placeholder.first_content); i < end; ++i) {
        if (!IsGone(index_.contents[i].node)) return true;
      }
      return false;
    });
  }

  const DocxTree& tree_;
  const std::vector<TemplateField>& fields_;
  const BookmarkIndex index_;
  std::unordered_set<NodeId> hidden_;
};

void SetAround(DocxTree& tree, const Miss& miss) {
  const auto& placeholder = miss.placeholder;
  auto first = placeholder.pieces.front();
  auto last = placeholder.pieces.back();
  const bool one_piece = first == last;
  if (placeholder.in_last < TextOfElement(tree, last).size()) {
    last = tree[SplitText(tree, last, placeholder.in_last)].previous;
    if (one_piece) first = last;
  }
  if (placeholder.in_first > 0) {
    first = SplitText(tree, first, placeholder.in_first);
    if (one_piece) last = first;
  }
  if (tree[last].next != kNoNode) SplitRunAt(tree, tree[last].next);
  const auto first_run = SplitRunAt(tree, first);
  tree.Unlink(miss.range.start);
  tree.InsertBefore(miss.range.start, first_run);
  tree.Unlink(miss.range.end);
  tree.InsertAfter(miss.range.end, tree[last].parent);
}

MissedPlaceholder Told(const Miss& miss, const DocxPlaces& places) {
  return {std::string(miss.range.name), miss.placeholder.text, places.Of(miss.range.end)};
}

/// Behind a blank, words in brackets may be meant.
TemplateFinding FindingOf(const Miss& miss, const MissedPlaceholder& told) {
  constexpr auto kWhere = std::to_array<std::pair<std::string_view, std::string_view>>(
      {{"right before its placeholder ", "both"},
       {"before the placeholder ", "both"},
       {"inside of its placeholder ", "the rest of it"}});
  const auto& [where, shown] = kWhere[static_cast<std::size_t>(miss.how)];
  const bool sure = miss.how != Miss::How::kBlankBetween;
  return {sure ? TemplateFinding::Grade::kError : TemplateFinding::Grade::kWarning,
          told.bookmark,
          "The bookmark ends " + std::string(where) + platform::Quoted(told.placeholder) +
              ", so that the letter shows " + std::string(shown) +
              ": set it around the placeholder, or let \"zemlo-letters bookmarks OLD.docx --repair "
              "NEW.docx\" do it.",
          {},
          told.place};
}

}  // namespace

std::vector<TemplateFinding> FindingsOfPlaceholders(const DocxStories& written,
                                                    const std::vector<TemplateField>& fields) {
  std::vector<TemplateFinding> findings;
  const HiddenStyles styles(written.package(), written.main_part());
  for (const auto& story : written.all()) {
    const auto misses = MissSearch(story.tree, styles, fields).Run();
    if (misses.empty()) continue;
    const auto places = written.PlacesOf(story);
    for (const auto& miss : misses) {
      if (miss.range.in_fallback) continue;
      const auto told = Told(miss, places);
      findings.push_back(FindingOf(miss, told));
    }
  }
  return findings;
}

RepairedTemplate RepairPlaceholders(const DocxDocument& document, const std::vector<TemplateField>& fields) {
  RepairedTemplate made;
  auto written = StoriesAsWritten(document);
  const HiddenStyles styles(written.package(), written.main_part());
  std::vector<std::string> contents;
  std::vector<std::string> names;
  for (auto& story : written.all()) {
    const auto misses = MissSearch(story.tree, styles, fields).Run();
    if (misses.empty()) continue;
    const auto places = written.PlacesOf(story);
    // Of several before the same placeholder the first one gets it.
    const auto begins = [](const Miss& miss) { return miss.placeholder.pieces.front(); };
    for (auto miss = misses.begin(); miss != misses.end(); ++miss) {
      if (miss != misses.begin() && begins(*miss) == begins(*(miss - 1))) continue;
      if (!miss->range.in_fallback) made.repaired.push_back(Told(*miss, places));
      SetAround(story.tree, *miss);
    }
    contents.push_back(story.tree.Serialize());
    names.push_back(story.part);
  }
  std::vector<PackagePart> parts;
  for (std::size_t i = 0; i < names.size(); ++i) parts.push_back({names[i], contents[i]});
  made.bytes = document.Source().With(parts);
  return made;
}

}  // namespace wordprocessor
