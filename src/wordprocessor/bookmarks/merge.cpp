#include "wordprocessor/bookmarks/merge.h"

#include <algorithm>
#include <cstdint>
#include <tuple>

#include "platform/agreed/field_names.h"
#include "wordprocessor/bookmarks/editor.h"
#include "wordprocessor/bookmarks/index.h"
#include "wordprocessor/bookmarks/rows.h"
#include "wordprocessor/bookmarks/text.h"

namespace wordprocessor {
namespace {

/// What becomes of a bookmark.
enum class Fate : std::uint8_t {
  kStays,       ///< its wording stands
  kIsReported,  ///< its wording stands, and the person hears of it
  kIsFilled,
  kIsRemoved,
  kIsSwallowed,  ///< lies in a bookmark that was filled or removed
};

class Merge {
 public:
  Merge(DocxTree& tree, const DataContext& context)
      : tree_(tree), scopes_(tree, context), rows_(RepeatTableRows(tree, scopes_)) {}

  void Run(std::vector<std::string>& unfilled) {
    const auto& ranges = rows_.index.ranges;
    fates_.reserve(ranges.size());
    for (const auto& range : ranges) fates_.push_back(FateOf(range));
    const auto order = Order();
    Swallow(order);
    BookmarkEditor editor(tree_, rows_.index);
    for (const auto i : order) {
      if (fates_[i] == Fate::kIsSwallowed) editor.DropMarks(ranges[i]);
      if (fates_[i] == Fate::kIsRemoved) editor.Remove(ranges[i]);
      if (fates_[i] != Fate::kIsFilled) continue;
      if (!editor.Fill(ranges[i], FieldOf(ranges[i])->text)) fates_[i] = Fate::kIsReported;
    }
    editor.Finish();
    for (const auto mark : rows_.copied) tree_.Unlink(mark);
    for (std::size_t i = 0; i < ranges.size(); ++i) {
      if (fates_[i] == Fate::kIsReported) unfilled.emplace_back(ranges[i].name);
    }
  }

 private:
  const DataField* FieldOf(const BookmarkRange& range) const { return scopes_.Find(tree_, range); }

  Fate FateOf(const BookmarkRange& range) const {
    if (rows_.done.contains(range.start)) return Fate::kStays;
    if (!range.has_end()) return Fate::kIsReported;
    const auto* field = FieldOf(range);
    const bool optional = platform::IsParagraphField(range.name);
    if (field == nullptr) return optional ? Fate::kStays : Fate::kIsReported;
    return optional && IsBlank(field->text) ? Fate::kIsRemoved : Fate::kIsFilled;
  }

  /// Larger ranges first where several begin at one place; optional paragraphs before the fields they hold.
  std::vector<std::uint32_t> Order() const {
    const auto& ranges = rows_.index.ranges;
    std::vector<std::uint32_t> order(ranges.size());
    for (std::uint32_t i = 0; i < order.size(); ++i) order[i] = i;
    const auto key = [&](std::uint32_t i) {
      const auto& range = ranges[i];
      return std::tuple(range.first_content, ~range.end_content, !platform::IsParagraphField(range.name), i);
    };
    std::ranges::sort(order, {}, key);
    return order;
  }

  /// What lies in a bookmark that is replaced goes with it. Of the ranges that hold a place the one that ends
  /// last is enough to ask: a range it does not hold is held by none of the others.
  void Swallow(const std::vector<std::uint32_t>& order) {
    const auto& ranges = rows_.index.ranges;
    const BookmarkRange* cover = nullptr;
    for (const auto i : order) {
      const auto& range = ranges[i];
      if (cover != nullptr && IsSwallowed(range, *cover)) {
        // A value that another one has wiped out is missing in the letter.
        const bool lost = fates_[i] == Fate::kIsFilled && !platform::IsParagraphField(cover->name);
        fates_[i] = lost && !FieldOf(range)->text.empty() ? Fate::kIsReported : Fate::kIsSwallowed;
        continue;
      }
      const bool replaced = fates_[i] == Fate::kIsFilled || fates_[i] == Fate::kIsRemoved;
      if (replaced && (cover == nullptr || range.end_content >= cover->end_content)) cover = &range;
    }
  }

  /// Two fields around the same text both show theirs, one after the other.
  static bool IsSwallowed(const BookmarkRange& range, const BookmarkRange& cover) {
    if (!cover.Holds(range)) return false;
    const bool both_ends = range.has_end() && !range.empty();
    return !(both_ends && range.SameContents(cover)) || platform::IsParagraphField(cover.name);
  }

  DocxTree& tree_;
  RowScopes scopes_;
  RepeatedRows rows_;
  std::vector<Fate> fates_;  // by range
};

}  // namespace

void MergeBookmarksOf(DocxTree& tree, const DataContext& context, std::vector<std::string>& unfilled) {
  Merge(tree, context).Run(unfilled);
}

}  // namespace wordprocessor
