#include "platform/controls/grid.h"

#include <algorithm>
#include <utility>

namespace platform {

void Grid::Bind(std::shared_ptr<RecordSet> rows) {
  rows_changed_.Disconnect();
  rows_ = std::move(rows);
  selected_rows_.clear();
  loaded_rows_.clear();
  if (rows_) {
    rows_->MoveFirst();
    rows_changed_ = rows_->Changed.Connect([this] { RowsChanged(); });
  }
  ContentChanged();
}

void Grid::UserSelects(std::vector<std::size_t> rows) {
  if (!enabled() || !visible()) return;
  selected_rows_ = std::move(rows);
  DropMissingRows();
  ContentChanged();
  Click();
}

void Grid::MakeCurrent(std::size_t row) {
  if (rows_) rows_->MoveTo(row);
}

void Grid::EnsureRowLoaded(std::size_t row) {
  if (!rows_ || row >= rows_->RecordCount()) return;
  if (loaded_rows_.insert(row).second) RowLoaded(row);
}

void Grid::RowsChanged() {
  DropMissingRows();
  ContentChanged();
}

void Grid::DropMissingRows() {
  const auto count = rows_ ? rows_->RecordCount() : 0;
  std::erase_if(selected_rows_, [count](std::size_t row) { return row >= count; });
  loaded_rows_.erase(loaded_rows_.lower_bound(count), loaded_rows_.end());
}

}  // namespace platform
