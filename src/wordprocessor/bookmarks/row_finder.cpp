#include "wordprocessor/bookmarks/row_finder.h"

namespace wordprocessor {

bool IsRowUnit(DocxKind kind) {
  return kind == DocxKind::kRow || kind == DocxKind::kContentControl || kind == DocxKind::kCustomXml;
}

RowBlock RowFinder::Find(const BookmarkIndex& index, const BookmarkRange& range) const {
  auto block = RowsTouched(index, range);
  if (block.first == kNoNode || block.last == kNoNode) return {};
  if (block.first != block.last && BeginsWith(block.last, range.end)) {
    block.last = Neighbour(tree_[block.last].previous, /*forward=*/false);
  }
  return block.first == block.last ? block : WithBookmarks(block, range);
}

RowBlock RowFinder::RowsTouched(const BookmarkIndex& index, const BookmarkRange& range) const {
  const auto starts = Units(range.start, /*forward=*/true);
  const auto ends = Units(range.end, /*forward=*/false);
  for (const auto start : starts) {
    for (const auto end : ends) {
      if (tree_[start].parent == tree_[end].parent) return {start, end};
    }
  }
  if (!starts.empty()) return {starts.front(), Last(tree_[starts.front()].parent)};
  if (!ends.empty()) return {First(tree_[ends.back()].parent), ends.back()};
  for (auto i = range.first_table; i < range.end_table; ++i) {
    const auto& table = index.tables[i];
    if (table.story == range.story) return {First(table.node), Last(table.node)};
  }
  return {};
}

/// The rows around a mark, the innermost first.
std::vector<NodeId> RowFinder::Units(NodeId mark, bool forward) const {
  std::vector<NodeId> units;
  for (auto node = mark; node != kNoNode && tree_[node].kind != DocxKind::kTextBox;) {
    const auto parent = tree_[node].parent;
    if (parent != kNoNode && tree_[parent].kind == DocxKind::kTable) {
      const auto unit = Neighbour(node, forward);
      if (unit != kNoNode) units.push_back(unit);
    }
    node = parent;
  }
  return units;
}

NodeId RowFinder::Neighbour(NodeId node, bool forward) const {
  while (node != kNoNode && !IsRowUnit(tree_[node].kind)) {
    node = forward ? tree_[node].next : tree_[node].previous;
  }
  return node;
}

/// Whether nothing a reader sees stands in `unit` before `mark`.
bool RowFinder::BeginsWith(NodeId unit, NodeId mark) const {
  if (!tree_.Contains(unit, mark)) return false;
  for (auto node = mark; node != unit; node = tree_[node].parent) {
    for (auto before = tree_[node].previous; before != kNoNode; before = tree_[before].previous) {
      const auto kind = tree_[before].kind;
      if (IsBlock(kind) || kind == DocxKind::kCell || kind == DocxKind::kRun) return false;
    }
  }
  return true;
}

RowBlock RowFinder::WithBookmarks(const RowBlock& block, const BookmarkRange& range) const {
  RowBlock narrowed;
  for (auto unit = block.first; unit != kNoNode; unit = tree_[unit].next) {
    if (IsRowUnit(tree_[unit].kind) && HoldsBookmark(unit, range)) {
      if (narrowed.first == kNoNode) narrowed.first = unit;
      narrowed.last = unit;
    }
    if (unit == block.last) break;
  }
  return narrowed.first == kNoNode ? block : narrowed;
}

bool RowFinder::HoldsBookmark(NodeId node, const BookmarkRange& range) const {
  if (tree_[node].kind == DocxKind::kBookmarkStart) {
    return node != range.start && !tree_.BookmarkOf(node).name.starts_with('_');
  }
  for (auto child = tree_[node].first_child; child != kNoNode; child = tree_[child].next) {
    if (HoldsBookmark(child, range)) return true;
  }
  return false;
}

}  // namespace wordprocessor
