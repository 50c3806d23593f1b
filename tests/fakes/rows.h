#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/record_set.h"

namespace fakes {

/// A row as a test writes it: columns that are not named are null.
using Row = std::vector<std::pair<std::string, platform::Value>>;

/// Rows under the columns of a record layout, or, where there is no such layout, under the columns the rows
/// name. The first row is current.
std::shared_ptr<platform::RecordSet> RowsOf(std::string_view record_name, const std::vector<Row>& rows);

/// A set of its own with the same rows, the first one current.
std::shared_ptr<platform::RecordSet> CopyOf(const platform::RecordSet& rows);

}  // namespace fakes
