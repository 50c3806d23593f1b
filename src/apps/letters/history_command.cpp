#include "apps/letters/command_line.h"
#include "apps/letters/commands.h"
#include "apps/letters/grid_listing.h"
#include "apps/letters/headless_office.h"
#include "apps/letters/search_criteria.h"
#include "apps/letters/standard_streams.h"

namespace apps {

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
  pages.tracking.sdgGrid.LoadAllRows();
  if (office.refused()) return kRefused;
  PrintGrid(pages.tracking.sdgGrid, line.IsSet("json"));
  return kDone;
}

}  // namespace apps
