#include "platform/controls/grid.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "platform/text.h"

namespace platform {
namespace {

std::string AsCurrency(std::string text) {
  const auto amount = Money::Parse(Trim(text));
  if (!amount) return text;
  auto grouped = amount->AsGroupedText();
  return grouped.insert(grouped.starts_with('-') ? 1 : 0, "$");
}

}  // namespace

void Grid::Bind(std::shared_ptr<RecordSet> rows) {
  rows_changed_.Disconnect();
  rows_ = std::move(rows);
  Select({});
  loaded_ids_.clear();
  order_.reset();
  if (rows_) {
    rows_->MoveFirst();
    rows_changed_ = rows_->Changed.Connect([this] { RowsChanged(); });
  }
  ContentChanged();
}

void Grid::UserSelects(std::vector<std::size_t> rows) {
  if (!enabled() || !visible()) return;
  Select(std::move(rows));
  ContentChanged();
  Click();
}

void Grid::MakeCurrent(std::size_t row) {
  if (!rows_) return;
  rows_->MoveTo(row);
  ShowCurrent();
}

void Grid::ShowCurrent() {
  if (const auto row = rows_ ? rows_->CurrentRow() : std::nullopt) RowWanted(*row);
}

void Grid::EnsureRowLoaded(std::size_t row) {
  const auto rows = rows_;
  if (!rows || row >= rows->RecordCount() || !loaded_ids_.insert(rows->RowId(row)).second) return;
  const RecordSet::Edit edit(*rows);
  RowLoaded(row);
}

void Grid::LoadAllRows() {
  const auto rows = rows_;
  if (!rows) return;
  const RecordSet::Edit edit(*rows);
  for (std::size_t row = 0; row < rows->RecordCount(); ++row) EnsureRowLoaded(row);
}

void Grid::SortBy(std::string_view key, bool descending) {
  const auto rows = rows_;
  if (!rows || !rows->HasColumn(key)) return;
  if (IsDerived(key)) LoadAllRows();
  order_ = Order{std::string(key), descending};
  const auto current = rows->CurrentRow();
  const auto current_id = current ? std::optional(rows->RowId(*current)) : std::nullopt;
  const RecordSet::Edit edit(*rows);
  rows->SortBy(key, descending);
  if (current_id) rows->MoveTo(RowOf(*current_id).value_or(0));
}

void Grid::UserSortsBy(std::string_view key) {
  if (!enabled() || !visible()) return;
  const bool ascending = order_ && EqualsIgnoringCase(order_->key, key) && !order_->descending;
  SortBy(key, /*descending=*/ascending);
}

std::string Grid::CellText(std::size_t row, const Column& column) const {
  if (!rows_ || row >= rows_->RecordCount() || !rows_->HasColumn(column.key)) return {};
  auto text = rows_->Text(row, column.key);
  return column.format == Format::kCurrency ? AsCurrency(std::move(text)) : text;
}

std::optional<std::size_t> Grid::RowOf(std::uint64_t row_id) const {
  for (std::size_t row = 0; rows_ && row < rows_->RecordCount(); ++row) {
    if (rows_->RowId(row) == row_id) return row;
  }
  return std::nullopt;
}

bool Grid::IsDerived(std::string_view key) const {
  return std::ranges::any_of(
      columns, [key](const Column& column) { return column.derived && EqualsIgnoringCase(column.key, key); });
}

void Grid::RowsChanged() {
  if (!IsSelectionInPlace()) FollowSelectedRows();
  ContentChanged();
}

void Grid::Select(std::vector<std::size_t> rows) {
  std::erase_if(rows, [this](std::size_t row) { return !rows_ || row >= rows_->RecordCount(); });
  selected_rows_ = std::move(rows);
  selected_ids_.clear();
  for (const auto row : selected_rows_) selected_ids_.push_back(rows_->RowId(row));
}

// Asked for every changed cell, so it must not look at all rows.
bool Grid::IsSelectionInPlace() const {
  for (std::size_t n = 0; n < selected_rows_.size(); ++n) {
    const auto row = selected_rows_[n];
    if (row >= rows_->RecordCount() || rows_->RowId(row) != selected_ids_[n]) return false;
  }
  return true;
}

void Grid::FollowSelectedRows() {
  std::unordered_map<std::uint64_t, std::size_t> rows_by_id;
  for (std::size_t row = 0; row < rows_->RecordCount(); ++row) rows_by_id[rows_->RowId(row)] = row;
  std::vector<std::size_t> rows;
  for (const auto id : selected_ids_) {
    if (const auto found = rows_by_id.find(id); found != rows_by_id.end()) rows.push_back(found->second);
  }
  Select(std::move(rows));
}

}  // namespace platform
