#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace postal {

/// Reads comma-separated values as RFC 4180 has them: quoted fields with commas, line breaks and doubled
/// quotes in them; line ends of either kind; a byte order mark at the start counts for nothing.
class CommaTableReader {
 public:
  struct Record {
    std::size_t line = 0;  ///< where it begins; the first is 1
    std::vector<std::string> fields = {};
    std::string fault = {};  ///< a clause where the line is no record; "" else
  };

  /// `text` outlives the reader.
  explicit CommaTableReader(std::string_view text);

  /// The next record; lines of nothing are passed over. Behind a line with a fault reading goes on with the
  /// next line. Nothing at the end.
  std::optional<Record> Next();

 private:
  bool ReadQuoted(std::string& field, std::size_t& at);
  std::string ReadFields(std::vector<std::string>& fields, std::size_t& at);

  const std::string_view text_;
  std::size_t at_ = 0;
  std::size_t line_ = 1;
};

/// The fields as a record, quoted where they have to be, with a line feed behind it.
std::string CommaRecord(const std::vector<std::string>& fields);

}  // namespace postal
