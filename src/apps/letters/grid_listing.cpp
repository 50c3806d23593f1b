#include "apps/letters/grid_listing.h"

#include <vector>

#include "apps/letters/listing.h"

namespace apps {

void PrintGrid(platform::Grid& grid, bool as_json) {
  const auto rows = grid.rows();
  if (rows) grid.LoadAllRows();  // a row gets its texts when it is first shown
  std::vector<Listing::Column> columns;
  for (const auto& column : grid.columns) columns.push_back({column.key.c_str(), column.Heading().c_str()});
  Listing listing{columns, {}};
  for (std::size_t row = 0; rows && row < rows->RecordCount(); ++row) {
    auto& texts = listing.rows.emplace_back();
    for (const auto& column : columns)
      texts.push_back(rows->HasColumn(column.key) ? rows->Text(row, column.key) : "");
  }
  Print(listing, as_json);
}

}  // namespace apps
