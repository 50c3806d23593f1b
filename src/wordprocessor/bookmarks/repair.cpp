#include "wordprocessor/bookmarks/repair.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "wordprocessor/bookmarks/index.h"
#include "wordprocessor/bookmarks/row_finder.h"

namespace wordprocessor {
namespace {

void JoinPieces(DocxTree& tree) {
  const BookmarkIndex index(tree);
  std::map<std::pair<std::string_view, std::uint32_t>, NodeId> open;  // by name and story: the first start
  for (const auto& range : index.ranges) {
    const auto key = std::pair(range.name, range.story);
    const auto found = open.find(key);
    if (found == open.end()) {
      if (!range.has_end()) open.emplace(key, range.start);
      continue;
    }
    tree.Unlink(range.start);
    if (!range.has_end()) continue;
    tree.JoinBookmark(found->second, range.end);
    open.erase(found);
  }
}

std::optional<std::size_t> Column(const DocxTree& tree, NodeId start, std::string_view attribute) {
  const auto digits = tree.Attribute(start, attribute);
  std::size_t column = 0;
  const auto parsed = std::from_chars(digits.data(), digits.data() + digits.size(), column);
  return parsed.ec == std::errc() ? std::optional(column) : std::nullopt;
}

/// The paragraphs of each cell of the row.
std::vector<std::vector<NodeId>> CellsOf(const DocxTree& tree, NodeId row) {
  std::vector<std::vector<NodeId>> cells;
  for (auto cell = tree[row].first_child; cell != kNoNode; cell = tree[cell].next) {
    if (tree[cell].kind != DocxKind::kCell) continue;
    auto& paragraphs = cells.emplace_back();
    for (auto block = tree[cell].first_child; block != kNoNode; block = tree[block].next) {
      if (tree[block].kind == DocxKind::kParagraph) paragraphs.push_back(block);
    }
  }
  return cells;
}

void MoveIntoColumns(DocxTree& tree, const BookmarkIndex& index, const BookmarkRange& range) {
  const auto first = Column(tree, range.start, "colFirst");
  const auto last = Column(tree, range.start, "colLast");
  if (!range.has_end() || !first || !last || *last < *first) return;
  const auto row = RowFinder(tree).Find(index, range).first;
  if (row == kNoNode) return;
  const auto cells = CellsOf(tree, row);
  const bool whole_row = *first == 0 && *last + 1 >= cells.size();
  if (whole_row || *first >= cells.size()) return;
  const auto& last_cell = cells[std::min(*last, cells.size() - 1)];
  if (cells[*first].empty() || last_cell.empty()) return;
  tree.DropAttribute(range.start, "colFirst");
  tree.DropAttribute(range.start, "colLast");
  tree.Unlink(range.start);
  tree.PrependContent(range.start, cells[*first].front());
  tree.MoveTo(range.end, last_cell.back());
}

}  // namespace

void RepairBookmarks(DocxTree& tree) {
  JoinPieces(tree);
  const BookmarkIndex index(tree);
  for (const auto& range : index.ranges) MoveIntoColumns(tree, index, range);
}

}  // namespace wordprocessor
