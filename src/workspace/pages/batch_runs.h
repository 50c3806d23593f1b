#pragma once

#include "platform/parties/services.h"
#include "workspace/pages/batch_page.h"

/// The batch runs in the batch page's grid.
namespace workspace {

/// Lists no runs, under the columns of a batch run.
void ShowNoRuns(const platform::Services& services, BatchPage& page);

/// No run is chosen: nothing can be done with one.
void WithdrawBatchActions(BatchPage& page);

}  // namespace workspace
