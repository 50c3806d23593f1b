#include "platform/controls/grid.h"

#include <unordered_map>
#include <utility>

namespace platform {

void Grid::Bind(std::shared_ptr<RecordSet> rows) {
  rows_changed_.Disconnect();
  rows_ = std::move(rows);
  Select({});
  loaded_ids_.clear();
  if (rows_) {
    rows_->MoveFirst();
    rows_changed_ = rows_->Changed.Connect([this] { RowsChanged(); });
  }
  ContentChanged();
}

void Grid::UserSelects(std::vector<std::size_t> rows) {
  if (!enabled() || !visible()) return;
  Select(rows);
  ContentChanged();
  Click();
}

void Grid::MakeCurrent(std::size_t row) {
  if (rows_) rows_->MoveTo(row);
}

void Grid::EnsureRowLoaded(std::size_t row) {
  if (!rows_ || row >= rows_->RecordCount()) return;
  if (loaded_ids_.insert(rows_->RowId(row)).second) RowLoaded(row);
}

void Grid::RowsChanged() {
  if (!IsSelectionInPlace()) FollowSelectedRows();
  ContentChanged();
}

void Grid::Select(const std::vector<std::size_t>& rows) {
  selected_rows_.clear();
  selected_ids_.clear();
  for (const auto row : rows) {
    if (!rows_ || row >= rows_->RecordCount()) continue;
    selected_rows_.push_back(row);
    selected_ids_.push_back(rows_->RowId(row));
  }
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
  Select(rows);
}

}  // namespace platform
