#pragma once

#include <vector>

#include "wordprocessor/bookmarks/index.h"
#include "wordprocessor/docx/tree.h"

namespace wordprocessor {

/// Children of one table: rows, or the content controls around them.
struct RowBlock {
  NodeId first = kNoNode;
  NodeId last = kNoNode;
};

/// Whether it is a row of a table, or something around rows.
bool IsRowUnit(DocxKind kind);

/// Finds the table rows that the bookmark of a table field means.
class RowFinder {
 public:
  explicit RowFinder(const DocxTree& tree) : tree_(tree) {}

  /// The rows in which the bookmark stands, or which it spans. Of several rows those from the first to the
  /// last with other bookmarks: headings and totals around them stay single. `first` is kNoNode without any.
  RowBlock Find(const BookmarkIndex& index, const BookmarkRange& range) const;

  /// kNoNode in a table without rows.
  NodeId First(NodeId table) const { return Neighbour(tree_[table].first_child, /*forward=*/true); }

 private:
  RowBlock RowsTouched(const BookmarkIndex& index, const BookmarkRange& range) const;
  std::vector<NodeId> Units(NodeId mark, bool forward) const;
  NodeId Neighbour(NodeId node, bool forward) const;
  NodeId Last(NodeId table) const { return Neighbour(tree_[table].last_child, /*forward=*/false); }
  bool BeginsWith(NodeId unit, NodeId mark) const;
  RowBlock WithBookmarks(const RowBlock& block, const BookmarkRange& range) const;
  bool HoldsBookmark(NodeId node, const BookmarkRange& range) const;

  const DocxTree& tree_;
};

}  // namespace wordprocessor
