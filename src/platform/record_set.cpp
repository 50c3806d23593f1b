#include "platform/record_set.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "platform/failure.h"
#include "platform/text.h"

namespace platform {
namespace {

constexpr auto kPastTheEnd = std::numeric_limits<std::size_t>::max();

/// Both folded; "%" in the pattern stands for any characters. What stands before the first "%" has to start
/// the text, what stands after the last one to end it; the pieces between are taken at their first place.
bool IsLike(std::string_view text, std::string_view pattern) {
  auto wildcard = pattern.find('%');
  if (wildcard == std::string_view::npos) return text == pattern;
  if (!text.starts_with(pattern.substr(0, wildcard))) return false;
  text.remove_prefix(wildcard);
  pattern.remove_prefix(wildcard + 1);

  while ((wildcard = pattern.find('%')) != std::string_view::npos) {
    const auto found = text.find(pattern.substr(0, wildcard));
    if (found == std::string_view::npos) return false;
    text.remove_prefix(found + wildcard);
    pattern.remove_prefix(wildcard + 1);
  }
  return text.ends_with(pattern);
}

}  // namespace

RecordSet::RecordSet(std::vector<std::string> columns) : columns_(std::move(columns)) {}

bool RecordSet::HasColumn(std::string_view column) const {
  if (std::ranges::find(columns_, column) != columns_.end()) return true;
  return std::ranges::any_of(columns_,
                             [column](const auto& name) { return EqualsIgnoringCase(name, column); });
}

void RecordSet::AddColumns(const std::vector<std::string>& columns) {
  for (const auto& column : columns) {
    if (!HasColumn(column)) columns_.push_back(column);
  }
  for (auto& row : rows_) row.cells.resize(columns_.size());
  TellChanged();
}

bool RecordSet::MoveFirst() {
  return MoveTo(0);
}

bool RecordSet::MoveTo(std::size_t row) {
  // An empty set stands before its first row, so that the first one appended is current.
  current_ = row < rows_.size() || row == 0 ? row : kPastTheEnd;
  return CurrentRow().has_value();
}

std::optional<std::size_t> RecordSet::CurrentRow() const {
  return current_ < rows_.size() ? std::optional(current_) : std::nullopt;
}

std::uint64_t RecordSet::RowId(std::size_t row) const {
  RequireRow(row);
  return rows_[row].id;
}

const Value& RecordSet::Get(std::string_view column) const {
  return Get(RequireCurrentRow(), column);
}

const Value& RecordSet::Get(std::size_t row, std::string_view column) const {
  RequireRow(row);
  return rows_[row].cells[ColumnIndex(column)];
}

std::span<const Value> RecordSet::Cells(std::size_t row) const {
  RequireRow(row);
  return rows_[row].cells;
}

std::string RecordSet::FirstText() const {
  const auto row = RequireCurrentRow();
  if (columns_.empty()) throw Failure(Failure::Kind::kNotFound, "The record set has no columns.");
  return rows_[row].cells.front().AsText();
}

void RecordSet::Set(std::string_view column, Value value) {
  Set(RequireCurrentRow(), column, std::move(value));
}

void RecordSet::Set(std::size_t row, std::string_view column, Value value) {
  RequireRow(row);
  rows_[row].cells[ColumnIndex(column)] = std::move(value);
  TellChanged();
}

void RecordSet::AddNew() {
  rows_.push_back({++last_id_, std::vector<Value>(columns_.size())});
  current_ = rows_.size() - 1;
  TellChanged();
}

void RecordSet::Append(std::vector<Value> values) {
  if (values.size() != columns_.size()) {
    throw Failure(Failure::Kind::kInternal, "A row of " + std::to_string(values.size()) +
                                                " values does not fit into " +
                                                std::to_string(columns_.size()) + " columns.");
  }
  rows_.push_back({++last_id_, std::move(values)});
  TellChanged();
}

std::optional<std::size_t> RecordSet::Find(std::string_view column, Match match, std::string_view pattern,
                                           std::size_t from) const {
  const auto index = ColumnIndex(column);
  const auto folded_pattern = FoldCase(pattern);
  for (auto row = from; row < rows_.size(); ++row) {
    const auto text = FoldCase(rows_[row].cells[index].AsText());
    if (match == Match::kLike ? IsLike(text, folded_pattern) : text == folded_pattern) return row;
  }
  return std::nullopt;
}

void RecordSet::Filter(const std::function<bool(const RecordSet& rows, std::size_t row)>& keep) {
  // All rows are asked before the first one goes: `keep` sees the set whole, and may fail.
  std::vector<std::size_t> kept;
  for (std::size_t row = 0; row < rows_.size(); ++row) {
    if (keep(*this, row)) kept.push_back(row);
  }
  std::vector<Row> kept_rows;
  kept_rows.reserve(kept.size());
  for (const auto row : kept) kept_rows.push_back(std::move(rows_[row]));
  rows_ = std::move(kept_rows);
  current_ = 0;
  TellChanged();
}

void RecordSet::SortBy(std::string_view column, bool descending) {
  const auto index = ColumnIndex(column);
  // Values of several kinds have one order only by their texts; by size and by text at once they have none.
  const Value* sample = nullptr;
  bool one_kind = true;
  for (const auto& row : rows_) {
    const auto& cell = row.cells[index];
    if (cell.IsNull()) continue;
    if (sample == nullptr) sample = &cell;
    one_kind = one_kind && cell.held().index() == sample->held().index();
  }
  const auto compare = [one_kind](const Value& left, const Value& right) {
    if (one_kind || left.IsNull() || right.IsNull()) return Value::Compare(left, right);
    return CompareIgnoringCase(left.AsText(), right.AsText());
  };
  std::ranges::stable_sort(rows_, [&](const Row& left, const Row& right) {
    const auto& first = descending ? right : left;
    const auto& second = descending ? left : right;
    return compare(first.cells[index], second.cells[index]) < 0;
  });
  current_ = 0;
  TellChanged();
}

RecordSet::Edit::~Edit() {
  if (--rows_.edits_ == 0 && rows_.changed_) rows_.TellChanged();
}

std::size_t RecordSet::ColumnIndex(std::string_view column) const {
  // A grid asks for every cell it paints, and mostly by the name as it was given.
  if (const auto exact = std::ranges::find(columns_, column); exact != columns_.end()) {
    return static_cast<std::size_t>(exact - columns_.begin());
  }
  for (std::size_t index = 0; index < columns_.size(); ++index) {
    if (EqualsIgnoringCase(columns_[index], column)) return index;
  }
  throw Failure(Failure::Kind::kNotFound, "The record set has no column \"" + std::string(column) + "\".");
}

std::size_t RecordSet::RequireCurrentRow() const {
  if (!CurrentRow()) throw Failure(Failure::Kind::kNotFound, "The record set has no current row.");
  return current_;
}

void RecordSet::RequireRow(std::size_t row) const {
  if (row < rows_.size()) return;
  throw Failure(Failure::Kind::kNotFound, "The record set has " + std::to_string(rows_.size()) +
                                              " rows; there is no row " + std::to_string(row + 1) + ".");
}

void RecordSet::TellChanged() {
  ++version_;
  changed_ = edits_ > 0;
  if (!changed_) Changed();  // last: an observer may drop the set
}

}  // namespace platform
