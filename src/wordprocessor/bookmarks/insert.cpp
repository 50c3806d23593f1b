#include "wordprocessor/bookmarks/insert.h"

#include <vector>

#include "wordprocessor/bookmarks/text.h"
#include "wordprocessor/docx/blocks.h"

namespace wordprocessor {
namespace {

/// A copy of a paragraph's or a run's properties, without the section that ends with the paragraph.
NodeId CopyProperties(DocxTree& tree, NodeId properties) {
  return tree.CopySubtree(properties, [&](NodeId original, NodeId) {
    return tree[original].kind != DocxKind::kSectionProperties;
  });
}

NodeId AddPiece(DocxTree& tree, NodeId run, const TextPiece& piece) {
  if (piece.kind == TextPiece::Kind::kTab) return tree.AddElement(DocxKind::kTab, "tab", run);
  if (piece.kind == TextPiece::Kind::kLineBreak) return tree.AddElement(DocxKind::kBreak, "br", run);
  const bool blanks = piece.text.starts_with(' ') || piece.text.ends_with(' ');
  const auto text = tree.AddElement(DocxKind::kText, "t", run, blanks ? " xml:space=\"preserve\"" : "");
  tree.Append(tree.AddText(piece.text), text);
  return text;
}

void InsertRun(DocxTree& tree, NodeId anchor, NodeId paragraph, NodeId formatting,
               const TextParagraph& pieces) {
  const auto run = tree.AddElement(DocxKind::kRun, "r", paragraph);
  if (formatting != kNoNode) tree.Append(CopyProperties(tree, formatting), run);
  for (const auto& piece : pieces) tree.Append(AddPiece(tree, run, piece), run);
  tree.InsertBefore(run, anchor);
}

/// What stands before `anchor` becomes a paragraph of its own, before this one and with the same properties.
/// So every node is moved once at most, and the section that may end with this paragraph stays where it is.
void SplitBefore(DocxTree& tree, NodeId anchor, NodeId paragraph) {
  const auto head = tree.AddElement(DocxKind::kParagraph, "p", paragraph);
  tree.InsertBefore(head, paragraph);
  const auto properties = tree.ChildOfKind(paragraph, DocxKind::kParagraphProperties);
  if (properties != kNoNode) tree.Append(CopyProperties(tree, properties), head);
  std::vector<NodeId> around;  // from the paragraph's child down to the anchor
  for (auto node = anchor; node != paragraph; node = tree[node].parent) around.push_back(node);
  auto target = head;
  for (auto level = around.rbegin(); level != around.rend(); ++level) {
    const auto parent = tree[*level].parent;
    for (auto child = tree[parent].first_child; child != *level;) {
      const auto next = tree[child].next;
      if (!IsProperties(tree[child].kind)) tree.MoveTo(child, target);
      child = next;
    }
    if (tree[*level].kind != DocxKind::kHyperlink) continue;  // other wrappers end with the first paragraph
    const auto link = tree.CopySubtree(*level, [&](NodeId original, NodeId) { return original == *level; });
    tree.Append(link, target);
    target = link;
  }
}

}  // namespace

void InsertFieldText(DocxTree& tree, NodeId anchor, NodeId formatting, std::string_view text) {
  const auto paragraph = ParagraphOf(tree, anchor);
  auto paragraphs = SplitFieldText(text);
  // The template's own paragraph mark serves as the last one of the text.
  const bool closed = paragraphs.size() > 1 && paragraphs.back().empty();
  if (closed && !HasContentAfter(tree, anchor, paragraph)) paragraphs.pop_back();
  for (std::size_t i = 0; i < paragraphs.size(); ++i) {
    if (i > 0) SplitBefore(tree, anchor, paragraph);
    if (!paragraphs[i].empty()) InsertRun(tree, anchor, paragraph, formatting, paragraphs[i]);
  }
}

}  // namespace wordprocessor
