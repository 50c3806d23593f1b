#include "wordprocessor/cleaning/changes.h"

#include <optional>
#include <string_view>

#include "wordprocessor/docx/escape.h"
#include "wordprocessor/docx/relations.h"

namespace wordprocessor {
namespace {

using ChangeKind = TrackedChange::Kind;
using About = TrackedChange::About;

bool Moves(const DocxTree& tree, NodeId node) {
  return LocalNameOf(tree[node].name()).starts_with("move");
}

std::optional<ChangeKind> ChangeKindOf(const DocxTree& tree, NodeId node) {
  switch (tree[node].kind) {
    case DocxKind::kInserted:
      return Moves(tree, node) ? ChangeKind::kMovedHere : ChangeKind::kInserted;
    case DocxKind::kDeleted:
      return Moves(tree, node) ? ChangeKind::kMovedAway : ChangeKind::kDeleted;
    case DocxKind::kDeletedText:
      return ChangeKind::kDeleted;
    case DocxKind::kPropertyChange:
      return ChangeKind::kFormatted;
    case DocxKind::kMergedCell:
      return ChangeKind::kCellsMerged;
    default:
      return std::nullopt;
  }
}

/// Fills in what a mark inside of properties is about.
void FindTarget(const DocxTree& tree, TrackedChange& change) {
  const auto around = tree[change.node].parent;
  const auto kind = tree[around].kind;
  const auto owner = tree[around].parent;
  if (!IsProperties(kind)) return;
  change.about = About::kLooks;
  if (kind == DocxKind::kRunProperties && tree[owner].kind == DocxKind::kParagraphProperties) {
    change.about = About::kParagraphMark;
    change.target = tree[owner].parent;
  } else if (tree[owner].kind == DocxKind::kRow) {
    change.about = About::kRow;
    change.target = owner;
  } else if (tree[owner].kind == DocxKind::kCell) {
    change.about = About::kCell;
    change.target = owner;
  }
}

void FindIn(const DocxTree& tree, NodeId node, std::vector<TrackedChange>& changes) {
  const auto kind = ChangeKindOf(tree, node);
  if (kind) {
    TrackedChange change{*kind, About::kText, node, node};
    if (change.kind == ChangeKind::kFormatted) change.about = About::kLooks;
    if (change.kind != ChangeKind::kFormatted) FindTarget(tree, change);
    // A list's number that was inserted or deleted, a formula's sign: looks, too.
    if (LocalNameOf(tree[tree[node].parent].name()) == "numPr") change.about = About::kLooks;
    changes.push_back(change);
    if (change.about != About::kText || change.deletes()) return;
  }
  for (auto child = tree[node].first_child; child != kNoNode; child = tree[child].next) {
    FindIn(tree, child, changes);
  }
}

void FindRanges(const DocxTree& tree, NodeId node, std::vector<NodeId>& ranges) {
  if (tree[node].kind == DocxKind::kChangeRange) ranges.push_back(node);
  for (auto child = tree[node].first_child; child != kNoNode; child = tree[child].next) {
    FindRanges(tree, child, ranges);
  }
}

void Unwrap(DocxTree& tree, NodeId node) {
  while (tree[node].first_child != kNoNode) {
    const auto child = tree[node].first_child;
    tree.Unlink(child);
    tree.InsertBefore(child, node);
  }
  tree.Unlink(node);
}

/// "rest" and "cont" of the change are "restart" and "continue" of the cell (17.4.85 and 17.13.5.4).
void MergeCell(DocxTree& tree, NodeId change) {
  const bool goes_on = tree.Attribute(change, "vMerge") == "cont";
  const auto name = tree[change].name();
  const auto prefix = std::string(name.substr(0, name.find(':') + 1));
  const auto merge =
      tree.AddElement(DocxKind::kOther, "vMerge", change,
                      " " + prefix + "val=\"" + std::string(goes_on ? "continue" : "restart") + "\"");
  const auto properties = tree[change].parent;
  auto place = change;
  for (auto other = tree[properties].first_child; other != kNoNode;) {
    const auto next = tree[other].next;
    const auto local_name = LocalNameOf(tree[other].name());
    if (local_name == "vMerge") tree.Unlink(other);
    // The properties that stand before it in 17.4.69.
    const bool before = local_name == "cnfStyle" || local_name == "tcW" || local_name == "gridSpan" ||
                        local_name == "hMerge" || local_name == "vMerge";
    if (!before && place == change) place = other;
    other = next;
  }
  tree.InsertBefore(merge, place);
  tree.Unlink(change);
}

void Accept(DocxTree& tree, const TrackedChange& change, DocxRemoval& removal) {
  if (change.kind == ChangeKind::kCellsMerged) return MergeCell(tree, change.node);
  if (change.about == About::kText) {
    return change.deletes() ? removal.Add(change.node) : Unwrap(tree, change.node);
  }
  tree.Unlink(change.node);
  if (!change.deletes() || change.about == About::kLooks) return;
  change.about == About::kParagraphMark ? removal.AddParagraphMark(change.target)
                                        : removal.Add(change.target);
}

}  // namespace

std::vector<TrackedChange> FindChanges(const DocxTree& tree) {
  std::vector<TrackedChange> changes;
  FindIn(tree, tree.root(), changes);
  return changes;
}

std::string AuthorOf(const DocxTree& tree, const TrackedChange& change) {
  return Unescaped(tree.Attribute(change.node, "author"));
}

bool AcceptChanges(DocxTree& tree, DocxRemoval& removal) {
  std::vector<NodeId> ranges;
  FindRanges(tree, tree.root(), ranges);
  for (const auto range : ranges) tree.Unlink(range);
  const auto changes = FindChanges(tree);
  for (const auto& change : changes) Accept(tree, change, removal);
  return !ranges.empty() || !changes.empty();
}

}  // namespace wordprocessor
