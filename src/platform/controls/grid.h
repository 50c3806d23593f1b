#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "platform/controls/control.h"
#include "platform/record_set.h"

namespace platform {

/// A table of rows bound to a record set, with several rows selectable.
class Grid : public Control {
 public:
  /// Whether the user sees a column that he said nothing about.
  enum class AtFirst { kShown, kShownWhereWide, kNotShown };
  enum class Format { kAsItIs, kCurrency };
  struct Column {
    std::string key;         ///< column of the bound rows
    std::string caption;     ///< heading; the key where it is empty
    std::string group;       ///< heading over several columns
    bool hidden = false;     ///< never offered to the user
    std::string cell_style;  ///< name of a style set; "" for the grid's own
    std::string heading_style;
    bool derived = false;  ///< filled by the row-loaded step: empty in a row that was never shown
    AtFirst at_first = AtFirst::kShown;
    Format format = Format::kAsItIs;  ///< kCurrency: an amount as "$1,045.50"; what is none stays

    const std::string& Heading() const { return caption.empty() ? key : caption; }
  };
  struct Order {
    std::string key;
    bool descending = false;
    bool operator==(const Order&) const = default;
  };
  struct Style {
    bool bold = false;
  };

  std::vector<Column> columns;
  std::map<std::string, Style> style_sets;
  Style style;

  /// Shows `rows` from the first one, in the order they have; selection and loaded rows are forgotten.
  void Bind(std::shared_ptr<RecordSet> rows);
  const std::shared_ptr<RecordSet>& rows() const { return rows_; }

  /// Row indexes in the order they were selected. The selection goes with its rows when their order changes.
  const std::vector<std::size_t>& selected_rows() const { return selected_rows_; }
  /// The user selects exactly these rows: one Click. Nothing happens while the grid is disabled or hidden.
  void UserSelects(std::vector<std::size_t> rows);
  /// Makes a row of the bound rows the current one, which the view brings into sight.
  void MakeCurrent(std::size_t row);
  /// A command is about to take the current row: the view brings it into sight.
  void ShowCurrent();

  /// The view is about to show the row: RowLoaded comes once for each row and binding, wherever the row moves
  /// to. A step of it that changes the row is not told of the row again; its changes are told as one.
  void EnsureRowLoaded(std::size_t row);
  /// The same for every row: before a derived column is sorted or searched. All changes are told as one.
  void LoadAllRows();

  /// Orders the rows by a column: stable, nulls first when ascending. Selection and current row stay with
  /// their rows. Nothing happens where the rows have no such column.
  void SortBy(std::string_view key, bool descending = false);
  /// The user chooses a heading: ascending, and descending when it is ascending already. Nothing happens
  /// while the grid is disabled or hidden.
  void UserSortsBy(std::string_view key);
  /// What SortBy last ordered the bound rows by.
  const std::optional<Order>& order() const { return order_; }

  /// What a cell shows, of a loaded row; "" where the rows have no such column.
  std::string CellText(std::size_t row, const Column& column) const;
  /// Where the row is now; nothing when it has gone.
  std::optional<std::size_t> RowOf(std::uint64_t row_id) const;

  Event<std::size_t> RowLoaded;
  Event<> Click;
  /// Rows, columns or selection have changed, for the view.
  Event<> ContentChanged;
  /// The row is to be in sight, for the view.
  Event<std::size_t> RowWanted;

 private:
  void RowsChanged();
  void Select(std::vector<std::size_t> rows);
  bool IsSelectionInPlace() const;
  bool IsDerived(std::string_view key) const;
  void FollowSelectedRows();

  std::shared_ptr<RecordSet> rows_;
  Connection rows_changed_;
  std::vector<std::size_t> selected_rows_;
  std::vector<std::uint64_t> selected_ids_;  // of the same rows
  std::optional<Order> order_;
  std::unordered_set<std::uint64_t> loaded_ids_;
};

}  // namespace platform
