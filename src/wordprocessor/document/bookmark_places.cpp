#include "wordprocessor/document/bookmark_places.h"

#include <algorithm>
#include <array>
#include <unordered_map>

#include "wordprocessor/bookmarks/index.h"
#include "wordprocessor/bookmarks/row_finder.h"
#include "wordprocessor/docx/escape.h"

namespace wordprocessor {
namespace {

constexpr auto kPlaceNames =
    std::to_array<std::string_view>({"body", "table", "header", "footer", "note", "text box"});

/// The text of a document part as a reader sees it, and where in it the bookmark marks stand.
///
/// A text box and a note have a text of their own: they do not interrupt the paragraph they hang on.
class TextWalk {
 public:
  explicit TextWalk(const DocxTree& tree) : tree_(tree) {
    texts_.emplace_back();
    Visit(tree.root());
  }

  std::string Between(NodeId start, NodeId end) const {
    const auto& from = marks_.at(start);
    const auto& to = marks_.at(end);
    return texts_[from.text].substr(from.offset, to.offset - from.offset);
  }

 private:
  struct Mark {
    std::size_t text;
    std::size_t offset;
  };

  void Visit(NodeId node) {
    switch (tree_[node].kind) {
      case DocxKind::kMarkup:
        if (in_text_) texts_[text_] += Unescaped(tree_[node].markup);
        return;
      case DocxKind::kBookmarkStart:
      case DocxKind::kBookmarkEnd:
        marks_[node] = {text_, texts_[text_].size()};
        return;
      case DocxKind::kTab:
        if (tree_[tree_[node].parent].kind == DocxKind::kRun) texts_[text_] += '\t';
        return;
      case DocxKind::kBreak:
        texts_[text_] += '\n';
        return;
      case DocxKind::kTextBox:
      case DocxKind::kNote:
        return VisitStory(node);
      case DocxKind::kText:
        in_text_ = true;
        VisitChildren(node);
        in_text_ = false;
        return;
      case DocxKind::kParagraph:
        VisitChildren(node);
        texts_[text_] += '\r';
        return;
      default:
        return VisitChildren(node);
    }
  }

  void VisitChildren(NodeId node) {
    for (auto child = tree_[node].first_child; child != kNoNode; child = tree_[child].next) Visit(child);
  }

  void VisitStory(NodeId node) {
    const auto outer = text_;
    text_ = texts_.size();
    texts_.emplace_back();
    VisitChildren(node);
    text_ = outer;
  }

  const DocxTree& tree_;
  std::vector<std::string> texts_;
  std::unordered_map<NodeId, Mark> marks_;
  std::size_t text_ = 0;
  bool in_text_ = false;
};

BookmarkPlace::Where WhereOf(const DocxTree& tree, const BookmarkIndex& index, const BookmarkRange& range,
                             DocxStory::Kind kind) {
  using Where = BookmarkPlace::Where;
  if (index.stories[range.story].text_box) return Where::kTextBox;
  if (kind == DocxStory::Kind::kHeader) return Where::kHeader;
  if (kind == DocxStory::Kind::kFooter) return Where::kFooter;
  if (kind == DocxStory::Kind::kNotes) return Where::kNote;
  return tree.Ancestor(range.start, DocxKind::kTable) != kNoNode ? Where::kTable : Where::kBody;
}

/// Starts are sorted by their contents, so that the neighbours are all there is to ask.
std::vector<std::string> InnerNames(const std::vector<BookmarkRange>& ranges, std::size_t at) {
  const auto& outer = ranges[at];
  auto first = at;
  while (first > 0 && ranges[first - 1].first_content == outer.first_content) --first;
  std::vector<std::string> names;
  for (auto i = first; i < ranges.size() && ranges[i].first_content <= outer.end_content; ++i) {
    const auto& inner = ranges[i];
    if (inner.in_fallback == outer.in_fallback && inner.has_end() && outer.Holds(inner)) {
      names.emplace_back(inner.name);
    }
  }
  return names;
}

}  // namespace

std::string_view PlaceName(BookmarkPlace::Where where) {
  return kPlaceNames[static_cast<std::size_t>(where)];
}

std::vector<BookmarkPlace> BookmarkPlacesOf(const DocxTree& tree, DocxStory::Kind kind) {
  const BookmarkIndex index(tree);
  const TextWalk texts(tree);
  std::vector<BookmarkPlace> places;
  for (std::size_t i = 0; i < index.ranges.size(); ++i) {
    const auto& range = index.ranges[i];
    if (!range.has_end() || range.in_fallback) continue;
    auto& place = places.emplace_back();
    place.bookmark.Name = range.name;
    place.bookmark.Text = texts.Between(range.start, range.end);
    place.bookmark.Inner = InnerNames(index.ranges, i);
    place.where = WhereOf(tree, index, range, kind);
    place.crosses_cells =
        tree.Ancestor(range.start, DocxKind::kCell) != tree.Ancestor(range.end, DocxKind::kCell);
  }
  return places;
}

std::vector<std::string> BookmarksInRowsOf(const DocxTree& tree, std::string_view table) {
  const BookmarkIndex index(tree);
  const auto bookmark = std::ranges::find_if(
      index.ranges, [&](const BookmarkRange& range) { return range.name == table && range.has_end(); });
  std::vector<std::string> names;
  if (bookmark == index.ranges.end()) return names;
  const auto rows = RowFinder(tree).Find(index, *bookmark);
  for (auto unit = rows.first; unit != kNoNode; unit = unit == rows.last ? kNoNode : tree[unit].next) {
    for (const auto& range : index.ranges) {
      if (range.start != bookmark->start && tree.Contains(unit, range.start)) names.emplace_back(range.name);
    }
  }
  return names;
}

std::vector<std::string> BookmarksWithoutEnd(const DocxTree& tree) {
  std::vector<std::string> names;
  for (const auto& range : BookmarkIndex(tree).ranges) {
    if (!range.has_end() && !range.in_fallback) names.emplace_back(range.name);
  }
  return names;
}

}  // namespace wordprocessor
