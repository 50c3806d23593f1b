#pragma once

#include <vector>

#include "wordprocessor/bookmarks/index.h"
#include "wordprocessor/docx/tree.h"

namespace wordprocessor {

/// Takes out of a document part what its author has deleted or hidden. It is collected first and goes at
/// once, so that it is known of every bookmark whether anything of its text is left.
///
/// - A bookmark all of whose text goes, goes with it; so does an empty one inside of what goes. Of others
///   the marks stay, next to where they stood.
/// - What is left empty around it (links, controls, rows, tables) goes too; cells, notes and text boxes
///   keep a paragraph.
/// - A paragraph whose mark goes is joined with the next one and looks like that, as in a word processor;
///   an empty next one takes the looks of the first.
class DocxRemoval {
 public:
  explicit DocxRemoval(DocxTree& tree) : tree_(tree) {}

  /// An element with its contents: a run, a row, a cell, what stands around deleted runs.
  void Add(NodeId node) { nodes_.push_back(node); }
  /// A run that nobody is shown. A paragraph of nothing else goes, though its mark is not hidden: so it is
  /// laid out.
  void AddHidden(NodeId run);
  void AddParagraphMark(NodeId paragraph) { paragraph_marks_.push_back(paragraph); }

  /// Once. Returns whether there was anything to do.
  bool Run();

 private:
  void FindGone();
  void Inherit(NodeId node);
  void DropBookmarks();
  bool GoesAway(const BookmarkIndex& index, const BookmarkRange& range) const;
  bool NeighbourGoes(NodeId mark, bool forward) const;
  NodeId OuterContent(NodeId node, bool forward) const;

  void TakeOut(NodeId node);
  void KeepMarks(NodeId node, NodeId place);
  bool IsLeftEmpty(NodeId node) const;
  void JoinParagraphs();
  void JoinWithNext(NodeId paragraph);
  NodeId NextBlock(NodeId block) const;
  void KeepParagraphs(NodeId node);

  DocxTree& tree_;
  std::vector<NodeId> nodes_;
  std::vector<NodeId> paragraph_marks_;
  std::vector<NodeId> with_hidden_text_;  // paragraphs
  std::vector<bool> gone_;                // by node
  std::vector<bool> mark_gone_;           // by node, of paragraphs
};

}  // namespace wordprocessor
