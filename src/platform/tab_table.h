#pragma once

#include <cstddef>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/table_faults.h"

namespace platform {

/// A table as an author writes it: a text file in UTF-8, one line a row, the values separated by tabs, the
/// first line naming the columns. A byte order mark, line ends of either kind, and lines of nothing but
/// blanks and tabs mean nothing.
class TabTable {
 public:
  using Columns = std::span<const std::string_view>;

  /// Reads a table whose first line has to name `columns`, in their order. What is no row of that many values
  /// in UTF-8 is added to `faults` and left out; where the first line is wrong, so are all rows. Throws
  /// Failure kNotFound where the file cannot be read.
  static TabTable Read(const std::filesystem::path& file, Columns columns, TableFaults& faults);
  /// Any columns. Throws Failure kDamaged with all that is wrong.
  static TabTable Read(const std::filesystem::path& file);

  std::size_t RowCount() const { return rows_.size(); }
  /// Blanks at either end removed. Throws Failure kDamaged where there is no such column.
  const std::string& Text(std::size_t row, std::string_view column) const;
  /// Where the row stands in the file; the first line is 1.
  std::size_t Line(std::size_t row) const { return rows_[row].line; }
  /// The same for a message: file, line and column.
  std::string Place(std::size_t row, std::string_view column) const;

 private:
  struct Row {
    std::size_t line;
    std::vector<std::string> values;
  };

  void ReadLines(std::istream& stream, TableFaults& faults);
  void AddRow(std::size_t line, std::vector<std::string> values, TableFaults& faults);
  bool HasHeader(Columns columns, TableFaults& faults) const;
  std::string PlaceOfLine(std::size_t line) const;

  std::filesystem::path file_;
  std::vector<std::string> columns_;
  std::vector<Row> rows_;
};

}  // namespace platform
