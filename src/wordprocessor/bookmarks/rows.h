#pragma once

#include <unordered_set>
#include <vector>

#include "wordprocessor/bookmarks/data_context.h"
#include "wordprocessor/bookmarks/index.h"
#include "wordprocessor/docx/tree.h"

namespace wordprocessor {

/// Which row of which table field each bookmark of a document part is filled from.
class RowScopes {
 public:
  RowScopes(const DocxTree& tree, const DataContext& context)
      : context_(context), rows_(tree.bookmarks().size(), nullptr) {}

  /// The row's column, else the letter's field of that name, else nothing.
  const DataField* Find(const DocxTree& tree, const BookmarkRange& range) const;

  /// The row's column or nothing.
  const DataField* FindColumn(const DocxTree& tree, const BookmarkRange& range) const;

  void Bind(const DocxTree& tree, NodeId mark, const DataRow& row);

 private:
  const DataContext& context_;
  std::vector<const DataRow*> rows_;  // by bookmark; shorter than the tree's list while that grows
};

/// The letter's rows made from the template's: the bookmarks left in `tree` need only be filled.
struct RepeatedRows {
  BookmarkIndex index;              ///< of the tree as it is afterwards
  std::vector<NodeId> copied;       ///< marks that go once their bookmarks are filled: names stay unique
  std::unordered_set<NodeId> done;  ///< starts of the table bookmarks, which ask for no text any more
};

/// Repeats the table rows in which (or around which) the bookmark of a table field stands, once for every row
/// of the field; without rows they go, and with the last row the table. Header rows stay: of several rows
/// those from the first to the last with bookmarks are repeated.
RepeatedRows RepeatTableRows(DocxTree& tree, RowScopes& scopes);

}  // namespace wordprocessor
