#pragma once

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "platform/failure.h"
#include "reference/reference_schema.h"

namespace reference {

/// The rows of a table as an installation brings them: a header line with the column names, then one line a
/// row, the cells separated by tabs, in UTF-8. Empty lines mean nothing. Read line by line.
class TableFile {
 public:
  /// Reads the header. Throws Failure kNotFound where the file is missing, kDamaged where the header does not
  /// name the table's columns in their order.
  TableFile(const std::filesystem::path& file, const Table& table);

  /// The next row, one cell a column; nothing at the end. Throws Failure kDamaged naming file, line and
  /// column for a cell that is missing, superfluous, empty where it must not be, or no date or timestamp.
  std::optional<std::vector<std::string>> Next();

  /// A failure at the row read last: "codes.tsv, line 12: " and the reason.
  platform::Failure Damaged(const std::string& reason) const;

 private:
  std::optional<std::vector<std::string>> NextCells();
  void CheckCell(const Column& column, const std::string& cell) const;

  const Table& table_;
  std::ifstream stream_;
  const std::string name_;
  std::size_t line_ = 0;
};

}  // namespace reference
