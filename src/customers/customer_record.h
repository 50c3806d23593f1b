#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/record_set.h"

namespace customers {

/// One customer of a record "CUSTOMER". Good while the rows live.
class CustomerRecord {
 public:
  CustomerRecord(const platform::RecordSet& rows, std::size_t row) : rows_(rows), row_(row) {}

  /// Nothing for null, otherwise the text as it is stored.
  std::optional<std::string> Text(std::string_view column) const;
  /// The same without blanks around it.
  std::optional<std::string> Trimmed(std::string_view column) const;

  /// The business name; where it is missing or blank, first and last name, if there are both.
  std::string Name() const;

 private:
  const platform::RecordSet& rows_;
  const std::size_t row_;
};

}  // namespace customers
