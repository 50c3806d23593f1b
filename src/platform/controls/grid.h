#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

#include "platform/controls/control.h"
#include "platform/record_set.h"

namespace platform {

/// A table of rows bound to a record set, with several rows selectable.
class Grid : public Control {
 public:
  struct Column {
    std::string key;      ///< column of the bound rows
    std::string caption;  ///< heading; the key where it is empty
    std::string group;    ///< heading over several columns
    bool hidden = false;
    std::string cell_style;  ///< name of a style set; "" for the grid's own
    std::string heading_style;
  };
  struct Style {
    bool bold = false;
  };

  std::vector<Column> columns;
  std::map<std::string, Style> style_sets;
  Style style;

  /// Shows `rows` from the first one; selection and loaded rows are forgotten.
  void Bind(std::shared_ptr<RecordSet> rows);
  const std::shared_ptr<RecordSet>& rows() const { return rows_; }

  /// Row indexes in the order they were selected. The selection goes with its rows when their order changes.
  const std::vector<std::size_t>& selected_rows() const { return selected_rows_; }
  /// The user selects exactly these rows: one Click. Nothing happens while the grid is disabled or hidden.
  void UserSelects(std::vector<std::size_t> rows);
  /// Makes a row of the bound rows the current one.
  void MakeCurrent(std::size_t row);

  /// The view is about to show the row: RowLoaded comes once for each row and binding, wherever the row moves
  /// to. A step of it that changes the row is not told of the row again.
  void EnsureRowLoaded(std::size_t row);

  Event<std::size_t> RowLoaded;
  Event<> Click;
  /// Rows, columns or selection have changed, for the view.
  Event<> ContentChanged;

 private:
  void RowsChanged();
  void Select(const std::vector<std::size_t>& rows);
  bool IsSelectionInPlace() const;
  void FollowSelectedRows();

  std::shared_ptr<RecordSet> rows_;
  Connection rows_changed_;
  std::vector<std::size_t> selected_rows_;
  std::vector<std::uint64_t> selected_ids_;  // of the same rows
  std::unordered_set<std::uint64_t> loaded_ids_;
};

}  // namespace platform
