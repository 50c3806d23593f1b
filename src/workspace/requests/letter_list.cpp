#include "workspace/requests/letter_list.h"

#include <string>
#include <vector>

#include "platform/agreed/requests.h"
#include "platform/parties/request_record.h"

namespace workspace {

void ShowLetters(platform::Grid& grid, const std::shared_ptr<platform::RecordSet>& letters) {
  std::vector<std::string> shown;
  for (const auto& column : grid.columns) shown.push_back(column.key);
  letters->AddColumns(shown);
  grid.Bind(letters);
  grid.SortBy("PRNT_TS");
  grid.MakeCurrent(0);
}

void ShowNoLetters(const platform::Services& services, platform::Grid& grid) {
  platform::RequestRecord letters(services.reference);
  letters.Source(platform::record_name::kHistory);
  letters.Open();
  grid.Bind(letters.Recordset());
}

}  // namespace workspace
