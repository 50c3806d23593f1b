#include "wordprocessor/bookmarks/index.h"

#include <utility>

namespace wordprocessor {
namespace {

std::uint32_t Count(const auto& list) {
  return static_cast<std::uint32_t>(list.size());
}

/// Walks a tree from its root; recursion is bounded by the depth the reader lets pass.
class IndexWalk {
 public:
  IndexWalk(const DocxTree& tree, BookmarkIndex& index)
      : tree_(tree), index_(index), open_(tree.id_count(), kNoNode) {
    index_.stories.push_back({});
  }

  void Visit(NodeId node) {
    ++place_;
    switch (tree_[node].kind) {
      case DocxKind::kMarkup:
        return;
      case DocxKind::kBookmarkStart:
        return Start(node);
      case DocxKind::kBookmarkEnd:
        return End(node);
      case DocxKind::kParagraph:
        return VisitExtent(node, index_.paragraphs);
      case DocxKind::kTable:
        return VisitExtent(node, index_.tables);
      case DocxKind::kRun:
      case DocxKind::kMath:
        return VisitContent(node);
      case DocxKind::kFieldMark:
      case DocxKind::kFieldCode:
        return VisitField(node);
      case DocxKind::kTextBox:
        return VisitStory(node, {.text_box = true});
      case DocxKind::kNote:
        return VisitStory(node, {.note = true});
      case DocxKind::kFallback:
        return VisitFallback(node);
      default:
        return VisitChildren(node);
    }
  }

 private:
  void VisitChildren(NodeId node) {
    for (auto child = tree_[node].first_child; child != kNoNode; child = tree_[child].next) Visit(child);
  }

  void VisitExtent(NodeId node, std::vector<BookmarkIndex::Extent>& extents) {
    const auto at = extents.size();
    extents.push_back({node, place_, 0, Count(index_.contents), story_});
    VisitChildren(node);
    extents[at].end_place = ++place_;
  }

  void VisitContent(NodeId node) {
    if (inside_content_) return VisitChildren(node);  // a run in a run: the text above another (w:ruby)
    index_.contents.push_back({node, kNoNode});
    content_ = Count(index_.contents) - 1;
    inside_content_ = true;
    VisitChildren(node);
    inside_content_ = false;
  }

  void VisitField(NodeId node) {
    if (!inside_content_) return;
    const auto markup = tree_[node].markup;
    const bool mark = tree_[node].kind == DocxKind::kFieldMark;
    if (mark && markup.find("fldCharType=\"begin\"") != markup.npos) {
      open_fields_.push_back(Count(index_.fields));
      index_.fields.push_back({content_, ~0u});
    }
    if (open_fields_.empty()) return;
    auto& field = index_.contents[content_].field;
    if (field == kNoNode) field = open_fields_.back();
    if (mark && markup.find("fldCharType=\"end\"") != markup.npos) {
      index_.fields[open_fields_.back()].last_content = content_;
      open_fields_.pop_back();
    }
  }

  void VisitStory(NodeId node, BookmarkIndex::Story story) {
    const auto outer_fields = std::exchange(open_fields_, {});
    const auto outer_content = content_;
    const auto outer_inside = std::exchange(inside_content_, false);
    const auto outer_story = std::exchange(story_, Count(index_.stories));
    index_.stories.push_back(story);
    VisitChildren(node);
    story_ = outer_story;
    inside_content_ = outer_inside;
    content_ = outer_content;
    open_fields_ = outer_fields;
  }

  void VisitFallback(NodeId node) {
    const auto outer = std::exchange(in_fallback_, true);
    VisitChildren(node);
    in_fallback_ = outer;
  }

  void Start(NodeId node) {
    const auto& mark = tree_.BookmarkOf(node);
    if (mark.name.empty() || mark.name.starts_with('_')) return;
    BookmarkRange range;
    range.name = mark.name;
    range.start = node;
    range.start_place = place_;
    range.first_content = range.end_content = Count(index_.contents);
    range.first_paragraph = range.end_paragraph = Count(index_.paragraphs);
    range.first_table = range.end_table = Count(index_.tables);
    range.story = story_;
    range.in_fallback = in_fallback_;
    open_[mark.id] = Count(index_.ranges);
    index_.ranges.push_back(range);
  }

  /// An end closes the latest start of its id that is still open: both tellings of a text box use the same
  /// ids.
  void End(NodeId node) {
    auto& open = open_[tree_.BookmarkOf(node).id];
    if (open == kNoNode || index_.ranges[open].story != story_) return;
    auto& range = index_.ranges[std::exchange(open, kNoNode)];
    range.end = node;
    range.end_place = place_;
    range.end_content = Count(index_.contents);
    range.end_paragraph = Count(index_.paragraphs);
    range.end_table = Count(index_.tables);
    if (EndsBeforeItsParagraph(range)) --range.end_paragraph;
  }

  /// An end right at the start of a paragraph is how some writers say "up to the end of the one before".
  bool EndsBeforeItsParagraph(const BookmarkRange& range) const {
    if (range.first_paragraph == range.end_paragraph) return false;
    const auto& last = index_.paragraphs.back();
    return last.end_place == 0 && last.story == story_ && last.first_content == range.end_content;
  }

  const DocxTree& tree_;
  BookmarkIndex& index_;
  std::vector<std::uint32_t> open_;  // by id: index of the range still open
  std::vector<std::uint32_t> open_fields_;
  std::uint32_t place_ = 0;
  std::uint32_t content_ = 0;
  std::uint32_t story_ = 0;
  bool inside_content_ = false;
  bool in_fallback_ = false;
};

}  // namespace

bool BookmarkRange::Holds(const BookmarkRange& inner) const {
  if (!has_end() || !inner.has_end()) {
    return has_end() && start_place < inner.start_place && inner.start_place < end_place;
  }
  if (inner.empty() || empty()) return start_place <= inner.start_place && inner.end_place <= end_place;
  return first_content <= inner.first_content && inner.end_content <= end_content;
}

BookmarkIndex::BookmarkIndex(const DocxTree& tree) {
  IndexWalk(tree, *this).Visit(tree.root());
}

}  // namespace wordprocessor
