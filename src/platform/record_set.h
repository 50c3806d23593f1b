#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/event.h"
#include "platform/value.h"

namespace platform {

/// Rows under named columns, with a current row: what a reply brings, a grid shows and a request carries.
///
/// Column names are looked up without regard to case. There is a current row unless the set is empty or
/// was moved past its end. Shared between a reply, its grid and the code that fills it; one thread at a time.
class RecordSet {
 public:
  enum class Match {
    kEquals,  ///< the whole text, without regard to case
    kLike,    ///< the same, and "%" in the pattern stands for any characters
  };

  explicit RecordSet(std::vector<std::string> columns);

  /// Names as they were given, in their order.
  const std::vector<std::string>& columns() const { return columns_; }
  bool HasColumn(std::string_view column) const;

  /// Adds the columns that are not there yet, null in every row. Tells Changed.
  void AddColumns(const std::vector<std::string>& columns);

  std::size_t RecordCount() const { return rows_.size(); }
  bool IsEmpty() const { return rows_.empty(); }

  /// Each returns whether there is a current row afterwards.
  bool MoveFirst();
  bool MoveTo(std::size_t row);
  /// Index of the current row; nothing when there is none.
  std::optional<std::size_t> CurrentRow() const;

  /// Tells a row from every other one this set ever had; it goes with the row when the order changes. Throws
  /// Failure kNotFound where there is no such row.
  std::uint64_t RowId(std::size_t row) const;

  /// Differs from what it was before any change of a cell, of the rows or of their order.
  std::uint64_t version() const { return version_; }

  /// The cell of the current row, or of a given row. Throw Failure kNotFound naming the column, or saying
  /// that there is no current row.
  const Value& Get(std::string_view column) const;
  const Value& Get(std::size_t row, std::string_view column) const;
  /// The same as text; "" for null.
  std::string Text(std::string_view column) const { return Get(column).AsText(); }
  std::string Text(std::size_t row, std::string_view column) const { return Get(row, column).AsText(); }
  /// All cells of a row in the order of the columns, for code that reads many rows whole. Valid until rows or
  /// columns are added, removed or put in another order. Throws Failure kNotFound.
  std::span<const Value> Cells(std::size_t row) const;
  /// The first column of the current row as text.
  std::string FirstText() const;

  /// Sets a cell; the same failures. Tells Changed.
  void Set(std::string_view column, Value value);
  void Set(std::size_t row, std::string_view column, Value value);
  /// Appends a row of nulls and makes it current. Tells Changed.
  void AddNew();
  /// Appends a row of exactly columns().size() values. The current row stays. Tells Changed.
  void Append(std::vector<Value> values);

  /// The first row at or after `from` whose text in `column` matches; the current row is not moved.
  std::optional<std::size_t> Find(std::string_view column, Match match, std::string_view pattern,
                                  std::size_t from = 0) const;
  /// Keeps the rows for which `keep` holds, in their order. No current row is kept: the first one is it.
  void Filter(const std::function<bool(const RecordSet& rows, std::size_t row)>& keep);
  /// Stable, ascending or descending, by Value::Compare; nulls first when ascending. The first row is
  /// current.
  void SortBy(std::string_view column, bool descending = false);

  /// Many changes, one Changed, told when the last Edit of the set ends. (From a destructor: an observer of
  /// Changed lets no failure out.)
  class Edit {
   public:
    explicit Edit(RecordSet& rows) : rows_(rows) { ++rows_.edits_; }
    Edit(const Edit&) = delete;
    Edit& operator=(const Edit&) = delete;
    ~Edit();

   private:
    RecordSet& rows_;
  };

  /// Cells, rows or their order have changed.
  Event<> Changed;

 private:
  std::size_t ColumnIndex(std::string_view column) const;
  std::size_t RequireCurrentRow() const;
  void RequireRow(std::size_t row) const;
  void TellChanged();

  std::vector<std::string> columns_;

  struct Row {
    std::uint64_t id;
    std::vector<Value> cells;
  };
  std::vector<Row> rows_;
  std::uint64_t last_id_ = 0;
  std::uint64_t version_ = 0;
  std::size_t current_ = 0;
  int edits_ = 0;
  bool changed_ = false;
};

}  // namespace platform
