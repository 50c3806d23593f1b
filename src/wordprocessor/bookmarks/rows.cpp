#include "wordprocessor/bookmarks/rows.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <unordered_set>
#include <utility>

#include "platform/agreed/field_names.h"
#include "wordprocessor/bookmarks/row_finder.h"

namespace wordprocessor {
namespace {

// Tables in tables; more levels than any letter has.
constexpr int kDeepestTable = 8;

// Far above what a document part numbers itself.
constexpr std::uint32_t kFirstNewIdentity = 0x30000000;

class RowRepeater {
 public:
  RowRepeater(DocxTree& tree, RowScopes& scopes) : tree_(tree), scopes_(scopes), finder_(tree) {}

  RepeatedRows Run() {
    std::optional<BookmarkIndex> index;
    for (int depth = 0; depth < kDeepestTable; ++depth) {
      index.emplace(tree_);
      nested_ = depth > 0;
      if (!RepeatOnce(*index)) return {std::move(*index), std::move(copied_), std::move(done_)};
    }
    return {BookmarkIndex(tree_), std::move(copied_), std::move(done_)};
  }

 private:
  /// Tables inside a repeated row have to wait for the next index. Returns whether anything was repeated.
  bool RepeatOnce(const BookmarkIndex& index) {
    bool repeated = false;
    for (std::size_t i = 0; i < index.ranges.size(); ++i) {
      const auto& range = index.ranges[i];
      const auto* field = FieldOf(range);
      if (field == nullptr || done_.contains(range.start) || !tree_.IsAttached(range.start)) continue;
      const auto block = finder_.Find(index, range);
      if (block.first == kNoNode || IsRepeated(block)) continue;
      if (!field->table && !LooksLikeTable(index, i)) continue;
      Repeat(range, block, *field);
      repeated = true;
    }
    return repeated;
  }

  /// The field that may be a table. Inside rows already repeated only a column can be: two tables of the
  /// letter in one row would multiply each other.
  const DataField* FieldOf(const BookmarkRange& range) const {
    if (!range.has_end()) return nullptr;
    const auto* field = nested_ ? scopes_.FindColumn(tree_, range) : scopes_.Find(tree_, range);
    return field != nullptr && (field->table || field->text.empty()) ? field : nullptr;
  }

  bool IsRepeated(const RowBlock& block) const {
    const auto beyond = tree_[block.last].next;
    for (auto unit = block.first; unit != beyond; unit = tree_[unit].next) {
      for (auto node = unit; node != kNoNode; node = tree_[node].parent) {
        if (repeated_.contains(node) && !(nested_ && node != unit)) return true;
      }
    }
    return false;
  }

  /// An empty element is an empty field or a table without rows. Around several cells, or around bookmarks
  /// that only a row could fill, it is a table.
  bool LooksLikeTable(const BookmarkIndex& index, std::size_t at) const {
    const auto& range = index.ranges[at];
    if (platform::IsParagraphField(range.name)) return false;
    if (tree_.Ancestor(range.start, DocxKind::kCell) != tree_.Ancestor(range.end, DocxKind::kCell))
      return true;
    for (auto i = at + 1; i < index.ranges.size() && index.ranges[i].start_place < range.end_place; ++i) {
      const auto& inner = index.ranges[i];
      if (!platform::IsParagraphField(inner.name) && scopes_.Find(tree_, inner) == nullptr) return true;
    }
    return false;
  }

  void Repeat(const BookmarkRange& range, RowBlock block, const DataField& field) {
    done_.insert(range.start);
    if (field.rows.empty()) return RemoveRows(range, block);
    const auto beyond = tree_[block.last].next;
    units_.clear();
    for (auto unit = block.first; unit != beyond; unit = tree_[unit].next) units_.push_back(unit);
    repeated_.insert(units_.begin(), units_.end());
    FindMarks();
    auto place = block.last;
    for (std::size_t i = 1; i < field.rows.size(); ++i) {
      for (const auto unit : units_) {
        const auto copy = CopyUnit(unit, range, field.rows[i]);
        if (copy == kNoNode) continue;
        tree_.InsertAfter(copy, place);
        repeated_.insert(copy);
        place = copy;
      }
    }
    for (const auto mark : starts_) scopes_.Bind(tree_, mark, field.rows.front());
  }

  /// A copy keeps the bookmarks that lie in the rows with both ends.
  void FindMarks() {
    starts_.clear();
    ends_by_id_.clear();
    for (const auto unit : units_) FindMarksIn(unit);
  }

  void FindMarksIn(NodeId node) {
    if (tree_[node].kind == DocxKind::kBookmarkStart) starts_.push_back(node);
    if (tree_[node].kind == DocxKind::kBookmarkStart) ++ends_by_id_[tree_.BookmarkOf(node).id].first;
    if (tree_[node].kind == DocxKind::kBookmarkEnd) ++ends_by_id_[tree_.BookmarkOf(node).id].second;
    for (auto child = tree_[node].first_child; child != kNoNode; child = tree_[child].next)
      FindMarksIn(child);
  }

  NodeId CopyUnit(NodeId unit, const BookmarkRange& range, const DataRow& row) {
    return tree_.CopySubtree(unit, [&](NodeId original, NodeId copy) {
      const auto kind = tree_[original].kind;
      if (kind == DocxKind::kBookmarkStart || kind == DocxKind::kBookmarkEnd) {
        return CopyMark(original, copy, range, row);
      }
      if (kind == DocxKind::kIdentifier) return false;
      if (tree_[original].unique) RenewIdentity(copy);
      return true;
    });
  }

  bool CopyMark(NodeId original, NodeId copy, const BookmarkRange& range, const DataRow& row) {
    const auto& [starts, ends] = ends_by_id_[tree_.BookmarkOf(original).id];
    if (original == range.start || original == range.end || starts == 0 || ends == 0) return false;
    tree_.RenewBookmark(copy);
    scopes_.Bind(tree_, copy, row);
    copied_.push_back(copy);
    return true;
  }

  void RenewIdentity(NodeId copy) {
    tree_.DropAttribute(copy, "paraId");
    tree_.DropAttribute(copy, "textId");
    const auto kind = tree_[copy].kind;
    if (kind == DocxKind::kParagraph || kind == DocxKind::kRow) return;
    tree_.SetAttribute(copy, "id", std::to_string(next_identity_++));
  }

  void RemoveRows(const BookmarkRange& range, const RowBlock& block) {
    const auto table = tree_[block.first].parent;
    for (auto unit = block.first; unit != kNoNode;) {
      const auto next = unit == block.last ? kNoNode : tree_[unit].next;
      if (IsRowUnit(tree_[unit].kind)) tree_.Unlink(unit);
      unit = next;
    }
    tree_.Unlink(range.start);
    tree_.Unlink(range.end);
    if (finder_.First(table) == kNoNode) RemoveTable(table);
  }

  void RemoveTable(NodeId table) {
    const auto parent = tree_[table].parent;
    tree_.InsertBefore(tree_.AddEmptyMarkup(), table);
    const auto place = tree_[table].previous;
    tree_.Unlink(table);
    for (auto child = tree_[parent].first_child; child != kNoNode; child = tree_[child].next) {
      if (IsBlock(tree_[child].kind)) return;
    }
    tree_.InsertAfter(tree_.AddElement(DocxKind::kParagraph, "p", table), place);
  }

  DocxTree& tree_;
  RowScopes& scopes_;
  const RowFinder finder_;
  bool nested_ = false;
  std::unordered_set<NodeId> repeated_;  // rows, copies included
  std::vector<NodeId> units_;            // of the template, repeated last
  std::vector<NodeId> copied_;
  std::unordered_set<NodeId> done_;
  std::vector<NodeId> starts_;
  std::map<std::uint32_t, std::pair<int, int>> ends_by_id_;  // how many starts and ends in the rows
  std::uint32_t next_identity_ = kFirstNewIdentity;
};

}  // namespace

const DataField* RowScopes::FindColumn(const DocxTree& tree, const BookmarkRange& range) const {
  const auto bookmark = tree[range.start].bookmark;
  const auto* row = bookmark < rows_.size() ? rows_[bookmark] : nullptr;
  return row == nullptr ? nullptr : row->Find(range.name);
}

const DataField* RowScopes::Find(const DocxTree& tree, const BookmarkRange& range) const {
  const auto* column = FindColumn(tree, range);
  return column != nullptr ? column : context_.Find(range.name);
}

void RowScopes::Bind(const DocxTree& tree, NodeId mark, const DataRow& row) {
  const auto bookmark = tree[mark].bookmark;
  if (bookmark >= rows_.size()) rows_.resize(std::max<std::size_t>(bookmark + 1, rows_.size() * 2), nullptr);
  rows_[bookmark] = &row;
}

RepeatedRows RepeatTableRows(DocxTree& tree, RowScopes& scopes) {
  return RowRepeater(tree, scopes).Run();
}

}  // namespace wordprocessor
