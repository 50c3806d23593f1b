#include "wordprocessor/bookmarks/editor.h"

#include <algorithm>

#include "wordprocessor/bookmarks/insert.h"
#include "wordprocessor/docx/blocks.h"

namespace wordprocessor {
namespace {

bool HoldsBlocks(DocxKind kind) {
  return kind == DocxKind::kBody || kind == DocxKind::kCell || kind == DocxKind::kTextBox ||
         kind == DocxKind::kNote || kind == DocxKind::kContentControlContent;
}

}  // namespace

bool BookmarkEditor::Fill(const BookmarkRange& range, std::string_view text) {
  if (!MoveIntoParagraph(range)) return false;
  const auto paragraph = ParagraphOf(tree_, range.start);
  auto formatting = FormattingAt(range, paragraph);
  const auto anchor = text.empty() ? kNoNode : AddAnchor(range, paragraph);
  const auto first = FirstContent(range);
  const auto inside = anchor != kNoNode ? anchor : first != kNoNode ? first : range.start;
  if (EndPlaceholder(inside)) formatting = kNoNode;
  TakeOutContents(range);
  TakeOutTables(range, paragraph);
  JoinParagraphs(range, paragraph, /*removing=*/false);
  if (anchor == kNoNode) return true;
  InsertFieldText(tree_, anchor, formatting, text);
  tree_.Unlink(anchor);
  return true;
}

void BookmarkEditor::Remove(const BookmarkRange& range) {
  DropMarks(range);
  if (!MoveIntoParagraph(range)) return;
  const auto paragraph = ParagraphOf(tree_, range.start);
  TakeOutContents(range);
  TakeOutTables(range, paragraph);
  maybe_empty_.push_back(JoinParagraphs(range, paragraph, /*removing=*/true));
  NoteRows(range, paragraph);
}

void BookmarkEditor::DropMarks(const BookmarkRange& range) {
  marks_to_drop_.push_back(range.start);
  if (range.has_end()) marks_to_drop_.push_back(range.end);
}

void BookmarkEditor::Finish() {
  for (const auto mark : marks_to_drop_) tree_.Unlink(mark);
  RemoveEmptyRows();
  for (const auto paragraph : maybe_empty_) {
    if (!tree_.IsAttached(paragraph) || HasContent(tree_, paragraph) || EndsSection(tree_, paragraph))
      continue;
    const auto block = WithItsControl(tree_, paragraph);
    if (CanRemoveBlock(tree_, block)) RemoveBlock(tree_, block);
  }
}

/// A start directly under the body, a table or a row means the start of the next paragraph.
bool BookmarkEditor::MoveIntoParagraph(const BookmarkRange& range) {
  if (ParagraphOf(tree_, range.start) != kNoNode) return true;
  const bool end_outside = ParagraphOf(tree_, range.end) == kNoNode;
  const bool around_paragraphs = range.first_paragraph != range.end_paragraph;
  if (!PlaceStart(range)) return false;
  if (end_outside && !around_paragraphs) {
    tree_.Unlink(range.end);
    tree_.InsertAfter(range.end, range.start);
  }
  return true;
}

bool BookmarkEditor::PlaceStart(const BookmarkRange& range) {
  const auto parent = tree_[range.start].parent;
  for (auto i = range.first_paragraph; i < index_.paragraphs.size(); ++i) {
    const auto& next = index_.paragraphs[i];
    if (next.story != range.story) continue;
    const bool inside = i < range.end_paragraph;
    if (!inside && !tree_.Contains(parent, next.node)) break;
    if (!tree_.IsAttached(next.node)) continue;
    tree_.Unlink(range.start);
    tree_.PrependContent(range.start, next.node);
    return true;
  }
  auto before = tree_[range.start].previous;
  while (before != kNoNode && tree_[before].kind != DocxKind::kParagraph) before = tree_[before].previous;
  if (before != kNoNode) {
    tree_.MoveTo(range.start, before);
    return true;
  }
  const bool story_root = parent == tree_.root() && tree_.ChildOfKind(parent, DocxKind::kBody) == kNoNode;
  if (!HoldsBlocks(tree_[parent].kind) && !story_root) return false;
  const auto paragraph = tree_.AddElement(DocxKind::kParagraph, "p", range.start);
  tree_.InsertAfter(paragraph, range.start);
  tree_.MoveTo(range.start, paragraph);
  return true;
}

/// The first content not settled by an earlier range, or kNoNode.
NodeId BookmarkEditor::FirstContent(const BookmarkRange& range) const {
  const auto first = std::max(range.first_content, contents_done_);
  return first < range.end_content ? index_.contents[first].node : kNoNode;
}

/// An empty piece of markup where the text goes: inside the link or control around the first run, else right
/// behind the start.
NodeId BookmarkEditor::AddAnchor(const BookmarkRange& range, NodeId paragraph) {
  const auto anchor = tree_.AddEmptyMarkup();
  const auto first = FirstContent(range);
  bool inside = first != kNoNode && ParagraphOf(tree_, first) == paragraph;
  for (auto around = inside ? tree_[first].parent : kNoNode; inside && around != paragraph;
       around = tree_[around].parent) {
    const auto kind = tree_[around].kind;
    inside = kind == DocxKind::kHyperlink || kind == DocxKind::kInline || kind == DocxKind::kSimpleField ||
             kind == DocxKind::kContentControl || kind == DocxKind::kContentControlContent ||
             kind == DocxKind::kCustomXml;
  }
  const bool behind_start = !inside || tree_[first].parent == tree_[range.start].parent;
  behind_start ? tree_.InsertAfter(anchor, range.start) : tree_.InsertBefore(anchor, first);
  return anchor;
}

/// The content controls around the text show it as their own content from now on, which may be changed.
/// Returns whether one showed a prompt, whose formatting says "not filled in yet".
bool BookmarkEditor::EndPlaceholder(NodeId inside) {
  bool prompt = false;
  for (auto control = tree_.Ancestor(inside, DocxKind::kContentControl); control != kNoNode;
       control = tree_.Ancestor(control, DocxKind::kContentControl)) {
    const auto properties = tree_.ChildOfKind(control, DocxKind::kContentControlProperties);
    if (properties == kNoNode) continue;
    for (auto placeholder = tree_.ChildOfKind(properties, DocxKind::kPlaceholder); placeholder != kNoNode;
         placeholder = tree_.ChildOfKind(properties, DocxKind::kPlaceholder)) {
      prompt = prompt || tree_[placeholder].name().ends_with("showingPlcHdr");
      tree_.Unlink(placeholder);
    }
  }
  return prompt;
}

/// The properties of the first run in the range; of an empty range those of the run before it, of the run
/// after it, or of the paragraph's mark. kNoNode where there are none.
NodeId BookmarkEditor::FormattingAt(const BookmarkRange& range, NodeId paragraph) const {
  const auto first = FirstContent(range);
  if (first != kNoNode) return tree_.ChildOfKind(first, DocxKind::kRunProperties);
  for (auto near = tree_[range.start].previous; near != kNoNode; near = tree_[near].previous) {
    if (tree_[near].kind == DocxKind::kRun) return tree_.ChildOfKind(near, DocxKind::kRunProperties);
    if (!IsBookmarkMark(tree_[near].kind)) break;
  }
  for (auto near = tree_[range.start].next; near != kNoNode; near = tree_[near].next) {
    if (tree_[near].kind == DocxKind::kRun) return tree_.ChildOfKind(near, DocxKind::kRunProperties);
    if (!IsBookmarkMark(tree_[near].kind)) break;
  }
  const auto properties = tree_.ChildOfKind(paragraph, DocxKind::kParagraphProperties);
  return properties == kNoNode ? kNoNode : tree_.ChildOfKind(properties, DocxKind::kRunProperties);
}

/// Codes and marks of a field that reaches out of the range, or out of what earlier ranges have left of it,
/// stay: half a field would damage the document.
void BookmarkEditor::TakeOutContents(const BookmarkRange& range) {
  const auto first = std::max(range.first_content, contents_done_);
  for (auto i = first; i < range.end_content; ++i) {
    const auto& content = index_.contents[i];
    if (content.field != kNoNode) {
      const auto& field = index_.fields[content.field];
      if (field.first_content < first || field.last_content >= range.end_content) continue;
    }
    TakeOut(content.node);
  }
  contents_done_ = std::max(contents_done_, range.end_content);
}

/// Takes out the content, and what stood around it and holds nothing more.
void BookmarkEditor::TakeOut(NodeId content) {
  auto node = content;
  while (tree_[node].parent != kNoNode) {
    const auto parent = tree_[node].parent;
    tree_.Unlink(node);
    if (!IsAroundRuns(tree_[parent].kind)) return;
    for (auto rest = tree_[parent].first_child; rest != kNoNode; rest = tree_[rest].next) {
      if (!IsProperties(tree_[rest].kind)) return;
    }
    node = parent;
  }
}

void BookmarkEditor::TakeOutTables(const BookmarkRange& range, NodeId paragraph) {
  for (auto i = range.first_table; i < range.end_table; ++i) {
    const auto& table = index_.tables[i];
    const bool inside = table.story == range.story && table.end_place < range.end_place;
    if (!inside || !tree_.IsAttached(table.node) || tree_.Contains(table.node, paragraph)) continue;
    MoveMarks(tree_, table.node, paragraph);
    tree_.Unlink(table.node);
  }
}

/// Returns the paragraph that now holds what is left: the first one, or the last one where a removal has left
/// nothing of the first (as deleting a paragraph's mark does in a word processor).
NodeId BookmarkEditor::JoinParagraphs(const BookmarkRange& range, NodeId paragraph, bool removing) {
  bool same_section = !EndsSection(tree_, paragraph);
  for (auto i = range.first_paragraph; i < range.end_paragraph; ++i) {
    const auto& later = index_.paragraphs[i];
    if (later.story != range.story || later.node == paragraph || !tree_.IsAttached(later.node)) continue;
    same_section = same_section && !EndsSection(tree_, later.node);
    const bool sibling = same_section && tree_[later.node].parent == tree_[paragraph].parent;
    const bool inside = later.end_place < range.end_place;
    if (sibling && removing && !inside && !HasContent(tree_, paragraph) && CanRemoveBlock(tree_, paragraph)) {
      RemoveBlock(tree_, paragraph);
      paragraph = later.node;
    } else if (sibling && CanRemoveBlock(tree_, later.node)) {
      JoinWith(paragraph, later.node);
    } else {
      if (removing) maybe_empty_.push_back(later.node);
      if (inside && !HasContent(tree_, later.node) && CanRemoveBlock(tree_, later.node))
        RemoveBlock(tree_, later.node);
    }
  }
  return paragraph;
}

void BookmarkEditor::JoinWith(NodeId paragraph, NodeId later) {
  for (auto child = tree_[later].first_child; child != kNoNode;) {
    const auto next = tree_[child].next;
    if (tree_[child].kind != DocxKind::kParagraphProperties) tree_.MoveTo(child, paragraph);
    child = next;
  }
  tree_.Unlink(later);
}

/// Rows wholly inside a removal that reaches over several cells are optional rows.
void BookmarkEditor::NoteRows(const BookmarkRange& range, NodeId paragraph) {
  const auto first_row = tree_.Ancestor(paragraph, DocxKind::kRow);
  NodeId last_cell = tree_.Ancestor(paragraph, DocxKind::kCell);
  bool several = false;
  std::vector<NodeId> rows;
  if (first_row != kNoNode) rows.push_back(first_row);
  for (auto i = range.first_paragraph; i < range.end_paragraph; ++i) {
    const auto& later = index_.paragraphs[i];
    const auto row = tree_.Ancestor(later.node, DocxKind::kRow);
    if (later.story != range.story || row == kNoNode) continue;
    several = several || tree_.Ancestor(later.node, DocxKind::kCell) != last_cell;
    if (rows.empty() || rows.back() != row) rows.push_back(row);
  }
  if (several) maybe_empty_rows_.insert(maybe_empty_rows_.end(), rows.begin(), rows.end());
}

void BookmarkEditor::RemoveEmptyRows() {
  if (maybe_empty_rows_.empty()) return;
  const std::unordered_set<NodeId> touched(maybe_empty_.begin(), maybe_empty_.end());
  for (const auto row : maybe_empty_rows_) {
    if (!tree_.IsAttached(row) || HasContent(tree_, row) || !IsWhollyIn(touched, row)) continue;
    const auto table = tree_.Ancestor(row, DocxKind::kTable);
    tree_.Unlink(row);
    if (tree_.ChildOfKind(table, DocxKind::kRow) == kNoNode && CanRemoveBlock(tree_, table))
      tree_.Unlink(table);
  }
}

bool BookmarkEditor::IsWhollyIn(const std::unordered_set<NodeId>& paragraphs, NodeId row) const {
  for (auto cell = tree_[row].first_child; cell != kNoNode; cell = tree_[cell].next) {
    if (tree_[cell].kind != DocxKind::kCell) continue;
    for (auto block = tree_[cell].first_child; block != kNoNode; block = tree_[block].next) {
      if (tree_[block].kind == DocxKind::kParagraph && !paragraphs.contains(block)) return false;
    }
  }
  return true;
}

}  // namespace wordprocessor
