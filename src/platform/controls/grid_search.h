#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/controls/grid.h"

namespace platform {

/// A text looked for in the cells of a grid, without regard to case. The grid outlives the search.
class GridSearch {
 public:
  /// A cell that has the text; `place` is the column's place among those that are searched.
  struct Hit {
    std::size_t row = 0;
    std::size_t place = 0;
    auto operator<=>(const Hit&) const = default;
  };

  explicit GridSearch(Grid& grid) : grid_(grid) {}

  /// Looks for `text` in these columns (indexes into the grid's, as they are shown). Where one of them is
  /// derived, rows that were never shown are loaded. The current hit is the first one from `from_row` on,
  /// else the first. An empty text is nowhere.
  void Find(std::string_view text, std::vector<std::size_t> columns, std::size_t from_row = 0);
  /// The same text and columns in the rows as they are now; the current hit stays with its row. False where
  /// nothing has changed since.
  bool FindAgain();

  /// Row by row, and in a row in the order of the columns.
  const std::vector<Hit>& hits() const { return hits_; }
  /// Index of the current hit; nothing when there are none.
  std::optional<std::size_t> current() const;
  /// The grid's column of a hit.
  std::size_t ColumnOf(const Hit& hit) const { return columns_.at(hit.place); }
  /// To the hit after or before the current one; after the last comes the first, before the first the last.
  void GoToNext();
  void GoToPrevious();

  /// Whether a cell of this text has what is looked for.
  bool IsHit(std::string_view cell_text) const;

 private:
  void ReadRows();
  void CollectHits();
  void CollectHitsOf(std::size_t row);
  /// That hit, else the next one, else the first.
  void MakeCurrent(Hit wanted);

  Grid& grid_;
  std::string folded_;  // what is looked for
  std::vector<std::size_t> columns_;
  // The rows as they were read: one folded text each, with a mark after every cell.
  std::shared_ptr<RecordSet> rows_;
  std::uint64_t version_ = 0;
  std::vector<std::size_t> read_columns_;
  std::vector<std::string> texts_;
  std::vector<std::uint64_t> ids_;
  std::vector<Hit> hits_;
  std::size_t current_ = 0;
};

}  // namespace platform
