#pragma once

#include <cstdint>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "wordprocessor/bookmarks/index.h"
#include "wordprocessor/docx/tree.h"

namespace wordprocessor {

/// Changes what bookmarks hold, in the tree their index was made of.
///
/// Ranges come in document order of their contents; every content and paragraph is taken out once, however
/// many ranges hold it. Whatever is taken out, the structure stays valid: a cell ends with a paragraph, a
/// section keeps its properties, a complex field stays whole or goes.
class BookmarkEditor {
 public:
  BookmarkEditor(DocxTree& tree, const BookmarkIndex& index) : tree_(tree), index_(index) {}

  /// The text in place of what the range holds, formatted as its first run, in its first paragraph; later
  /// paragraphs join that one, or are emptied where they stand in other cells.
  /// Returns false where no paragraph can take it.
  bool Fill(const BookmarkRange& range, std::string_view text);

  /// Takes out the range with its marks, and the paragraphs and rows that it leaves empty.
  void Remove(const BookmarkRange& range);

  /// Takes out the marks alone: what was inside has gone with another range.
  void DropMarks(const BookmarkRange& range);

  /// Ends all: paragraphs and rows left empty go now.
  void Finish();

 private:
  bool MoveIntoParagraph(const BookmarkRange& range);
  bool PlaceStart(const BookmarkRange& range);

  NodeId FirstContent(const BookmarkRange& range) const;
  NodeId AddAnchor(const BookmarkRange& range, NodeId paragraph);
  bool EndPlaceholder(NodeId inside);
  NodeId FormattingAt(const BookmarkRange& range, NodeId paragraph) const;

  void TakeOutContents(const BookmarkRange& range);
  void TakeOut(NodeId content);
  void TakeOutTables(const BookmarkRange& range, NodeId paragraph);
  NodeId JoinParagraphs(const BookmarkRange& range, NodeId paragraph, bool removing);
  void JoinWith(NodeId paragraph, NodeId later);

  void NoteRows(const BookmarkRange& range, NodeId paragraph);
  void RemoveEmptyRows();
  bool IsWhollyIn(const std::unordered_set<NodeId>& paragraphs, NodeId row) const;

  DocxTree& tree_;
  const BookmarkIndex& index_;
  std::uint32_t contents_done_ = 0;  // contents before this one are settled
  std::vector<NodeId> maybe_empty_;  // paragraphs touched by a removal, in document order
  std::vector<NodeId> maybe_empty_rows_;
  std::vector<NodeId> marks_to_drop_;
};

}  // namespace wordprocessor
