#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace server {

/// A text file of rows: values separated by tabs, the first line names the columns. Empty lines are passed
/// over.
class TabTable {
 public:
  /// Throws Failure kNotFound naming the file; kDamaged naming file and line for a line that has not as many
  /// values as the first line has names, or is not UTF-8.
  static TabTable Read(const std::filesystem::path& file);

  std::size_t RowCount() const { return rows_.size(); }
  /// Blanks at either end removed. Throws Failure kDamaged where there is no such column.
  const std::string& Text(std::size_t row, std::string_view column) const;
  /// Where the row stands in the file; the first line is 1.
  std::size_t Line(std::size_t row) const { return rows_[row].line; }
  /// Stops the reading: throws Failure kDamaged with `what`, the file, the row's line and the column.
  [[noreturn]] void Refuse(std::size_t row, std::string_view column, const std::string& what) const;

 private:
  struct Row {
    std::size_t line;
    std::vector<std::string> values;
  };
  std::filesystem::path file_;
  std::vector<std::string> columns_;
  std::vector<Row> rows_;
};

}  // namespace server
