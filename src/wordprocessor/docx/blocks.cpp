#include "wordprocessor/docx/blocks.h"

namespace wordprocessor {

bool IsBookmarkMark(DocxKind kind) {
  return kind == DocxKind::kBookmarkStart || kind == DocxKind::kBookmarkEnd;
}

NodeId ParagraphOf(const DocxTree& tree, NodeId node) {
  while (node != kNoNode && tree[node].kind != DocxKind::kParagraph) {
    if (tree[node].kind == DocxKind::kTextBox || tree[node].kind == DocxKind::kNote) return kNoNode;
    node = tree[node].parent;
  }
  return node;
}

void MoveMarks(DocxTree& tree, NodeId from, NodeId to) {
  for (auto child = tree[from].first_child; child != kNoNode;) {
    const auto next = tree[child].next;
    IsBookmarkMark(tree[child].kind) ? tree.MoveTo(child, to) : MoveMarks(tree, child, to);
    child = next;
  }
}

bool HasContent(const DocxTree& tree, NodeId node) {
  const auto kind = tree[node].kind;
  if (IsProperties(kind) || IsBookmarkMark(kind) || kind == DocxKind::kRenderedBreak) return false;
  const auto parent = tree[node].parent;
  if (kind == DocxKind::kMarkup) return !tree[node].markup.empty() && tree[parent].kind == DocxKind::kText;
  const bool in_run = tree[parent].kind == DocxKind::kRun;
  if (kind == DocxKind::kMath || (in_run && kind != DocxKind::kText && kind != DocxKind::kComment))
    return true;
  for (auto child = tree[node].first_child; child != kNoNode; child = tree[child].next) {
    if (HasContent(tree, child)) return true;
  }
  return false;
}

bool HasContentAfter(const DocxTree& tree, NodeId node, NodeId paragraph) {
  for (; node != paragraph; node = tree[node].parent) {
    for (auto after = tree[node].next; after != kNoNode; after = tree[after].next) {
      if (HasContent(tree, after)) return true;
    }
  }
  return false;
}

bool EndsSection(const DocxTree& tree, NodeId paragraph) {
  const auto properties = tree.ChildOfKind(paragraph, DocxKind::kParagraphProperties);
  return properties != kNoNode && tree.ChildOfKind(properties, DocxKind::kSectionProperties) != kNoNode;
}

NodeId WithItsControl(const DocxTree& tree, NodeId block) {
  while (true) {
    const auto content = tree[block].parent;
    if (tree[content].kind != DocxKind::kContentControlContent) return block;
    for (auto other = tree[content].first_child; other != kNoNode; other = tree[other].next) {
      if (other != block && IsBlock(tree[other].kind)) return block;
    }
    block = tree[content].parent;
  }
}

bool CanRemoveBlock(const DocxTree& tree, NodeId block) {
  if (EndsSection(tree, block)) return false;
  auto before = tree[block].previous;
  while (before != kNoNode && !IsBlock(tree[before].kind)) before = tree[before].previous;
  auto after = tree[block].next;
  while (after != kNoNode && !IsBlock(tree[after].kind)) after = tree[after].next;
  const auto kind_before = before == kNoNode ? DocxKind::kOther : tree[before].kind;
  if (after == kNoNode) return kind_before == DocxKind::kParagraph;
  return kind_before != DocxKind::kTable || tree[after].kind != DocxKind::kTable;
}

void RemoveBlock(DocxTree& tree, NodeId block) {
  auto before = tree[block].previous;
  while (before != kNoNode && tree[before].kind != DocxKind::kParagraph) before = tree[before].previous;
  auto after = tree[block].next;
  while (after != kNoNode && tree[after].kind != DocxKind::kParagraph) after = tree[after].next;
  if (after != kNoNode) {
    const auto marks = tree.AddElement(DocxKind::kOther, "marks", block);
    MoveMarks(tree, block, marks);
    while (tree[marks].last_child != kNoNode) {
      const auto mark = tree[marks].last_child;
      tree.Unlink(mark);
      tree.PrependContent(mark, after);
    }
  } else if (before != kNoNode) {
    MoveMarks(tree, block, before);
  }
  tree.Unlink(block);
}

}  // namespace wordprocessor
