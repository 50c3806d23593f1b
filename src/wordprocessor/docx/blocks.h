#pragma once

#include "wordprocessor/docx/tree.h"

/// What holds what in a document part, and what may go without making it invalid (ECMA-376, part 1, 17.2 to
/// 17.4: a cell, a text box, a note and a header end with a paragraph).
namespace wordprocessor {

bool IsBookmarkMark(DocxKind kind);

/// The paragraph around `node` in its own text (a text box hangs on a paragraph but is none of its text), or
/// kNoNode.
NodeId ParagraphOf(const DocxTree& tree, NodeId node);

/// Whether a reader sees anything of it.
bool HasContent(const DocxTree& tree, NodeId node);
/// Whether a reader sees anything in `paragraph` after `node`.
bool HasContentAfter(const DocxTree& tree, NodeId node, NodeId paragraph);

/// Whether the properties of a section hang on the paragraph.
bool EndsSection(const DocxTree& tree, NodeId paragraph);

/// The block itself, or the content control that holds nothing else.
NodeId WithItsControl(const DocxTree& tree, NodeId block);

/// Every container keeps a paragraph at its end; a paragraph between two tables keeps them apart; a paragraph
/// that ends a section stays with it.
bool CanRemoveBlock(const DocxTree& tree, NodeId block);
/// Bookmark marks in it move to the nearest paragraph.
void RemoveBlock(DocxTree& tree, NodeId block);

/// Moves all bookmark marks in `from` to the end of `to`.
void MoveMarks(DocxTree& tree, NodeId from, NodeId to);

}  // namespace wordprocessor
