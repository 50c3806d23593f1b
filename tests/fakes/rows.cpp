#include "tests/fakes/rows.h"

#include "platform/agreed/record_layouts.h"
#include "platform/text.h"

namespace fakes {

std::shared_ptr<platform::RecordSet> RowsOf(std::string_view record_name, const std::vector<Row>& rows) {
  std::vector<std::string> columns;
  if (const auto layout = platform::FindRecordLayout(record_name)) {
    columns.assign(layout->columns.begin(), layout->columns.end());
  }
  const auto has = [&](const std::string& name) {
    for (const auto& column : columns) {
      if (platform::EqualsIgnoringCase(column, name)) return true;
    }
    return false;
  };
  for (const auto& row : rows) {
    for (const auto& [name, value] : row) {
      if (!has(name)) columns.push_back(name);
    }
  }
  auto set = std::make_shared<platform::RecordSet>(columns);
  for (const auto& row : rows) {
    set->AddNew();
    for (const auto& [name, value] : row) set->Set(name, value);
  }
  set->MoveFirst();
  return set;
}

std::shared_ptr<platform::RecordSet> CopyOf(const platform::RecordSet& rows) {
  auto copy = std::make_shared<platform::RecordSet>(rows.columns());
  for (std::size_t row = 0; row < rows.RecordCount(); ++row) {
    std::vector<platform::Value> values;
    for (const auto& column : rows.columns()) values.push_back(rows.Get(row, column));
    copy->Append(std::move(values));
  }
  copy->MoveFirst();
  return copy;
}

}  // namespace fakes
