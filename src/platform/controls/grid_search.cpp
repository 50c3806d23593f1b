#include "platform/controls/grid_search.h"

#include <algorithm>
#include <utility>

#include "platform/text.h"

namespace platform {
namespace {

constexpr char kEndOfCell = '\0';  // in no text of a record

}  // namespace

void GridSearch::Find(std::string_view text, std::vector<std::size_t> columns, std::size_t from_row) {
  folded_ = FoldCase(text);
  columns_ = std::move(columns);
  CollectHits();
  MakeCurrent({from_row, 0});
}

bool GridSearch::FindAgain() {
  if (folded_.empty() || (grid_.rows() == rows_ && (!rows_ || rows_->version() == version_))) return false;
  const auto hit = hits_.empty() ? Hit{} : hits_[current_];
  const auto row = hits_.empty() || grid_.rows() != rows_ ? std::nullopt : grid_.RowOf(ids_[hit.row]);
  CollectHits();
  MakeCurrent({row.value_or(0), row ? hit.place : 0});
  return true;
}

// Hits stand in the order of their rows and places.
void GridSearch::MakeCurrent(Hit wanted) {
  const auto found = std::ranges::find_if(hits_, [&](const Hit& hit) { return hit >= wanted; });
  current_ = found == hits_.end() ? 0 : static_cast<std::size_t>(found - hits_.begin());
}

std::optional<std::size_t> GridSearch::current() const {
  return hits_.empty() ? std::nullopt : std::optional(current_);
}

void GridSearch::GoToNext() {
  if (!hits_.empty()) current_ = (current_ + 1) % hits_.size();
}

void GridSearch::GoToPrevious() {
  if (!hits_.empty()) current_ = (current_ + hits_.size() - 1) % hits_.size();
}

bool GridSearch::IsHit(std::string_view cell_text) const {
  return !folded_.empty() && FoldCase(cell_text).find(folded_) != std::string::npos;
}

void GridSearch::ReadRows() {
  const auto is_derived = [this](std::size_t column) { return grid_.columns.at(column).derived; };
  if (std::ranges::any_of(columns_, is_derived)) grid_.LoadAllRows();
  const auto& rows = grid_.rows();
  const auto version = rows ? rows->version() : 0;
  if (rows == rows_ && version == version_ && columns_ == read_columns_) return;
  rows_ = rows;
  version_ = version;
  read_columns_ = columns_;
  texts_.assign(rows ? rows->RecordCount() : 0, {});
  ids_.resize(texts_.size());
  for (std::size_t row = 0; row < texts_.size(); ++row) {
    auto& text = texts_[row];
    ids_[row] = rows->RowId(row);
    for (const auto column : columns_) {
      text += FoldCase(grid_.CellText(row, grid_.columns.at(column)));
      text += kEndOfCell;
    }
  }
}

void GridSearch::CollectHits() {
  hits_.clear();
  if (folded_.empty()) return;
  ReadRows();
  for (std::size_t row = 0; row < texts_.size(); ++row) CollectHitsOf(row);
}

void GridSearch::CollectHitsOf(std::size_t row) {
  const std::string& text = texts_[row];
  std::size_t place = 0;
  std::size_t start = 0;  // of the cell at `place`
  for (auto found = text.find(folded_); found != std::string::npos; found = text.find(folded_, start)) {
    for (auto end = text.find(kEndOfCell, start); end < found; end = text.find(kEndOfCell, start)) {
      ++place;
      start = end + 1;
    }
    hits_.push_back({row, place});
    start = text.find(kEndOfCell, found) + 1;
    ++place;
  }
}

}  // namespace platform
