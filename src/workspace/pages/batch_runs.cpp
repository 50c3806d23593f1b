#include "workspace/pages/batch_runs.h"

#include "platform/agreed/requests.h"
#include "platform/parties/request_record.h"

namespace workspace {

void ShowNoRuns(const platform::Services& services, BatchPage& page) {
  platform::RequestRecord runs(services.reference);
  runs.Source(platform::record_name::kBatchRuns);
  runs.Open();
  page.sdgGrid.Bind(runs.Recordset());
}

void WithdrawBatchActions(BatchPage& page) {
  for (auto& option : page.OptBatchAct) {
    option.SetEnabled(false);
    option.SetSelected(false);
  }
}

}  // namespace workspace
