#include "wordprocessor/docx/runs.h"

#include "wordprocessor/docx/escape.h"

namespace wordprocessor {
namespace {

NodeId AddTextElement(DocxTree& tree, std::string_view text, NodeId like) {
  const auto element = tree.AddElement(DocxKind::kText, "t", like, " xml:space=\"preserve\"");
  tree.Append(tree.AddText(text), element);
  return element;
}

NodeId AddRunLike(DocxTree& tree, NodeId properties, NodeId like) {
  const auto run = tree.AddElement(DocxKind::kRun, "r", like);
  if (properties == kNoNode) return run;
  tree.Append(tree.CopySubtree(properties, [](NodeId, NodeId) { return true; }), run);
  return run;
}

}  // namespace

NodeId SplitRunAt(DocxTree& tree, NodeId piece) {
  const auto run = tree[piece].parent;
  auto before = tree[piece].previous;
  while (before != kNoNode && IsProperties(tree[before].kind)) before = tree[before].previous;
  if (before == kNoNode) return run;
  const auto rest = AddRunLike(tree, tree.ChildOfKind(run, DocxKind::kRunProperties), run);
  tree.InsertAfter(rest, run);
  for (auto child = piece; child != kNoNode;) {
    const auto next = tree[child].next;
    tree.MoveTo(child, rest);
    child = next;
  }
  return rest;
}

NodeId SplitText(DocxTree& tree, NodeId text, std::size_t length) {
  const auto whole = TextOfElement(tree, text);
  const auto head = AddTextElement(tree, std::string_view(whole).substr(0, length), text);
  const auto tail = AddTextElement(tree, std::string_view(whole).substr(length), text);
  tree.InsertBefore(head, text);
  tree.InsertBefore(tail, text);
  tree.Unlink(text);
  return tail;
}

NodeId AddRun(DocxTree& tree, std::string_view text, NodeId properties, NodeId like) {
  const auto run = AddRunLike(tree, properties, like);
  tree.Append(AddTextElement(tree, text, run), run);
  return run;
}

void TakeOutOfRun(DocxTree& tree, NodeId piece) {
  const auto run = tree[piece].parent;
  if (run == kNoNode) return;
  tree.Unlink(piece);
  for (auto rest = tree[run].first_child; rest != kNoNode; rest = tree[rest].next) {
    if (!IsProperties(tree[rest].kind)) return;
  }
  tree.Unlink(run);
}

std::string TextOfElement(const DocxTree& tree, NodeId text) {
  std::string words;
  for (auto child = tree[text].first_child; child != kNoNode; child = tree[child].next) {
    words += Unescaped(tree[child].markup);
  }
  return words;
}

}  // namespace wordprocessor
