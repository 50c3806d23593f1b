#include "wordprocessor/cleaning/comments.h"

#include <set>

#include "wordprocessor/docx/escape.h"

namespace wordprocessor {
namespace {

void FindCommentMarks(const DocxTree& tree, NodeId node, std::vector<NodeId>& marks) {
  if (tree[node].kind == DocxKind::kComment) marks.push_back(node);
  for (auto child = tree[node].first_child; child != kNoNode; child = tree[child].next) {
    FindCommentMarks(tree, child, marks);
  }
}

std::vector<NodeId> CommentMarks(const DocxTree& tree) {
  std::vector<NodeId> marks;
  FindCommentMarks(tree, tree.root(), marks);
  return marks;
}

bool HoldsPropertiesOnly(const DocxTree& tree, NodeId node) {
  for (auto child = tree[node].first_child; child != kNoNode; child = tree[child].next) {
    if (!IsProperties(tree[child].kind)) return false;
  }
  return true;
}

}  // namespace

std::vector<DocxComment> FindComments(const DocxTree& tree) {
  std::vector<DocxComment> comments;
  std::set<std::string> known;
  for (const auto mark : CommentMarks(tree)) {
    auto id = Unescaped(tree.Attribute(mark, "id"));
    if (known.insert(id).second) comments.push_back({mark, std::move(id)});
  }
  return comments;
}

bool DropComments(DocxTree& tree) {
  const auto marks = CommentMarks(tree);
  for (const auto mark : marks) {
    const auto run = tree[mark].parent;
    tree.Unlink(mark);
    if (tree[run].kind == DocxKind::kRun && HoldsPropertiesOnly(tree, run)) tree.Unlink(run);
  }
  return !marks.empty();
}

}  // namespace wordprocessor
