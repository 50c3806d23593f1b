#include <iostream>
#include <string>
#include <vector>

#include "apps/letters/command_line.h"
#include "apps/letters/commands.h"
#include "apps/letters/headless_office.h"
#include "apps/letters/listing.h"
#include "apps/letters/search_criteria.h"
#include "apps/letters/standard_streams.h"

namespace apps {
namespace {

/// A row gets its texts when it is first shown.
void ShowRows(platform::Grid& grid) {
  for (std::size_t row = 0; grid.rows() && row < grid.rows()->RecordCount(); ++row) grid.EnsureRowLoaded(row);
}

/// The letters as the grid shows them.
void List(platform::Grid& grid, bool as_json) {
  std::vector<Listing::Column> columns;
  for (const auto& column : grid.columns) {
    const auto& heading = column.caption.empty() ? column.key : column.caption;
    columns.push_back({column.key.c_str(), heading.c_str()});
  }
  Listing listing{columns, {}};
  const auto letters = grid.rows();
  for (std::size_t row = 0; letters && row < letters->RecordCount(); ++row) {
    auto& texts = listing.rows.emplace_back();
    for (const auto& column : columns) texts.push_back(letters->Text(row, column.key));
  }
  Print(listing, as_json);
}

}  // namespace

int RunHistory(const QStringList& words) {
  CommandLine line("history", "Finds letters that were produced");
  AddCriteria(line.DataOption());
  line.JsonOption();
  if (const auto status = line.Parse(words)) return *status;
  if (const auto fault = CriterionFault(line)) return line.WrongUsage(*fault);

  HeadlessOffice office(line.Data(), {});
  office.Start();
  if (office.refused()) return kRefused;
  SearchLetters(office, line);
  if (office.refused()) return kRefused;
  auto& pages = office.workspace().pages();
  const auto& letters = pages.tracking.sdgGrid.rows();
  if (!letters || letters->IsEmpty()) Notices() << "No letter history record found\n";
  ShowRows(pages.tracking.sdgGrid);
  if (office.refused()) return kRefused;
  List(pages.tracking.sdgGrid, line.IsSet("json"));
  return kDone;
}

}  // namespace apps
