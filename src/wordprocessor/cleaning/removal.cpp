#include "wordprocessor/cleaning/removal.h"

#include <algorithm>
#include <ranges>

#include "wordprocessor/docx/blocks.h"
#include "wordprocessor/docx/relations.h"

namespace wordprocessor {
namespace {

/// What is worth nothing without contents.
bool GoesWhenEmpty(DocxKind kind) {
  return IsAroundRuns(kind) || kind == DocxKind::kRun || kind == DocxKind::kRow || kind == DocxKind::kTable;
}

bool EndsWithParagraph(DocxKind kind) {
  return kind == DocxKind::kCell || kind == DocxKind::kTextBox || kind == DocxKind::kNote;
}

bool IsHeaderOrFooter(std::string_view name) {
  const auto local_name = LocalNameOf(name);
  return local_name == "hdr" || local_name == "ftr";
}

}  // namespace

void DocxRemoval::AddHidden(NodeId run) {
  nodes_.push_back(run);
  const auto paragraph = ParagraphOf(tree_, run);
  if (paragraph != kNoNode) with_hidden_text_.push_back(paragraph);
}

bool DocxRemoval::Run() {
  if (nodes_.empty() && paragraph_marks_.empty()) return false;
  FindGone();
  DropBookmarks();
  for (const auto node : nodes_) {
    const auto parent = tree_[node].parent;
    if (parent != kNoNode && !gone_[parent]) TakeOut(node);
  }
  JoinParagraphs();
  for (const auto paragraph : with_hidden_text_) {
    if (!tree_.IsAttached(paragraph) || HasContent(tree_, paragraph)) continue;
    const auto block = WithItsControl(tree_, paragraph);
    if (CanRemoveBlock(tree_, block)) RemoveBlock(tree_, block);
  }
  KeepParagraphs(tree_.root());
  return true;
}

void DocxRemoval::FindGone() {
  gone_.assign(tree_.size(), false);
  mark_gone_.assign(tree_.size(), false);
  for (const auto node : nodes_) gone_[node] = true;
  for (const auto paragraph : paragraph_marks_) mark_gone_[paragraph] = true;
  Inherit(tree_.root());
}

void DocxRemoval::Inherit(NodeId node) {
  for (auto child = tree_[node].first_child; child != kNoNode; child = tree_[child].next) {
    if (gone_[node]) gone_[child] = true;
    Inherit(child);
  }
}

void DocxRemoval::DropBookmarks() {
  const BookmarkIndex index(tree_);
  for (const auto& range : index.ranges) {
    if (!range.has_end() || !GoesAway(index, range)) continue;
    tree_.Unlink(range.start);
    tree_.Unlink(range.end);
  }
}

bool DocxRemoval::GoesAway(const BookmarkIndex& index, const BookmarkRange& range) const {
  bool any = false;
  for (auto i = range.first_content; i < range.end_content; ++i) {
    const auto content = index.contents[i].node;
    if (!HasContent(tree_, content)) continue;
    if (!gone_[content]) return false;
    any = true;
  }
  if (any || (gone_[range.start] && gone_[range.end])) return true;
  return NeighbourGoes(range.start, /*forward=*/false) && NeighbourGoes(range.end, /*forward=*/true);
}

/// Whether the text next to an empty bookmark goes; at the ends of a paragraph its mark is asked.
bool DocxRemoval::NeighbourGoes(NodeId mark, bool forward) const {
  const auto paragraph = ParagraphOf(tree_, mark);
  if (paragraph == kNoNode) return false;
  for (auto node = mark; node != paragraph; node = tree_[node].parent) {
    auto near = forward ? tree_[node].next : tree_[node].previous;
    for (; near != kNoNode; near = forward ? tree_[near].next : tree_[near].previous) {
      if (HasContent(tree_, near)) return gone_[OuterContent(near, !forward)];
    }
  }
  return mark_gone_[paragraph];
}

/// The first (or last) run or formula in `node`, which holds some.
NodeId DocxRemoval::OuterContent(NodeId node, bool first) const {
  while (tree_[node].kind != DocxKind::kRun && tree_[node].kind != DocxKind::kMath) {
    auto child = first ? tree_[node].first_child : tree_[node].last_child;
    while (child != kNoNode && !HasContent(tree_, child)) {
      child = first ? tree_[child].next : tree_[child].previous;
    }
    if (child == kNoNode) return node;
    node = child;
  }
  return node;
}

/// Takes it out, and what stood around it and holds nothing more.
void DocxRemoval::TakeOut(NodeId node) {
  while (true) {
    const auto parent = tree_[node].parent;
    KeepMarks(node, node);
    tree_.Unlink(node);
    if (!GoesWhenEmpty(tree_[parent].kind) || !IsLeftEmpty(parent) || tree_[parent].parent == kNoNode) return;
    node = parent;
  }
}

void DocxRemoval::KeepMarks(NodeId node, NodeId place) {
  for (auto child = tree_[node].first_child; child != kNoNode;) {
    const auto next = tree_[child].next;
    if (IsBookmarkMark(tree_[child].kind)) {
      tree_.Unlink(child);
      tree_.InsertBefore(child, place);
    } else {
      KeepMarks(child, place);
    }
    child = next;
  }
}

bool DocxRemoval::IsLeftEmpty(NodeId node) const {
  for (auto child = tree_[node].first_child; child != kNoNode; child = tree_[child].next) {
    const auto kind = tree_[child].kind;
    if (!IsProperties(kind) && !IsBookmarkMark(kind) && kind != DocxKind::kMarkup) return false;
  }
  return true;
}

/// The last ones first: what is moved is moved once.
void DocxRemoval::JoinParagraphs() {
  std::ranges::sort(paragraph_marks_);
  for (const auto paragraph : std::views::reverse(paragraph_marks_)) {
    if (!gone_[paragraph] && tree_.IsAttached(paragraph)) JoinWithNext(paragraph);
  }
}

void DocxRemoval::JoinWithNext(NodeId paragraph) {
  const auto next = NextBlock(paragraph);
  if (next == kNoNode || tree_[next].kind != DocxKind::kParagraph) {
    if (!HasContent(tree_, paragraph) && CanRemoveBlock(tree_, paragraph)) RemoveBlock(tree_, paragraph);
    return;
  }
  const bool keeps_looks =
      HasContent(tree_, paragraph) && !HasContent(tree_, next) && !EndsSection(tree_, next);
  for (auto child = tree_[paragraph].last_child; child != kNoNode;) {
    const auto previous = tree_[child].previous;
    if (!IsProperties(tree_[child].kind)) {
      tree_.Unlink(child);
      tree_.PrependContent(child, next);
    }
    child = previous;
  }
  const auto own = tree_.ChildOfKind(paragraph, DocxKind::kParagraphProperties);
  const auto others = tree_.ChildOfKind(next, DocxKind::kParagraphProperties);
  if (keeps_looks) {
    if (others != kNoNode) tree_.Unlink(others);
    if (own != kNoNode) {
      tree_.Unlink(own);
      tree_.PrependContent(own, next);
    }
  }
  for (auto between = tree_[paragraph].next; between != next;) {
    const auto after = tree_[between].next;
    if (IsBookmarkMark(tree_[between].kind)) {
      tree_.Unlink(between);
      tree_.InsertBefore(between, paragraph);
    }
    between = after;
  }
  tree_.Unlink(paragraph);
}

NodeId DocxRemoval::NextBlock(NodeId block) const {
  auto next = tree_[block].next;
  while (next != kNoNode && !IsBlock(tree_[next].kind)) next = tree_[next].next;
  return next;
}

void DocxRemoval::KeepParagraphs(NodeId node) {
  if (!tree_[node].is_element()) return;
  NodeId last = kNoNode;
  for (auto child = tree_[node].first_child; child != kNoNode; child = tree_[child].next) {
    if (IsBlock(tree_[child].kind)) last = child;
    KeepParagraphs(child);
  }
  const bool holds_text = EndsWithParagraph(tree_[node].kind);
  if (holds_text && (last == kNoNode || tree_[last].kind == DocxKind::kTable)) {
    tree_.Append(tree_.AddElement(DocxKind::kParagraph, "p", node), node);
  }
  if (last == kNoNode && (tree_[node].kind == DocxKind::kBody || IsHeaderOrFooter(tree_[node].name()))) {
    const auto paragraph = tree_.AddElement(DocxKind::kParagraph, "p", node);
    const auto first = tree_[node].first_child;
    first == kNoNode ? tree_.Append(paragraph, node) : tree_.InsertBefore(paragraph, first);
  }
}

}  // namespace wordprocessor
