#include "workspace/fields/batch_criteria.h"

#include "workspace/pages/batch_runs.h"

namespace workspace {

using platform::Trap;

void BatchCriteria::OptBatchDate_Click(std::size_t option) {
  Trap(services_, "ZEMLO_Correspondence.OptBatchDate_Click", [&] {
    SetDates(option == BatchPage::kDateRange ? std::optional(services_.clock.Today()) : std::nullopt);
    field_check_.CheckEdit(PageIndex::kBatch);
  });
}

void BatchCriteria::OptBatchStatus_Click() {
  Trap(services_, "PRJ_ZEMLO_Corresp.OptBatchStatus_Click",
       [&] { field_check_.CheckEdit(PageIndex::kBatch); });
}

void BatchCriteria::Clear() {
  Trap(services_, "ZEMLO_Corresp.cmdBatch_Click", [&] {
    for (auto& option : page_.OptBatchDate) option.SetSelected(false);
    SetDates(std::nullopt);
    for (auto& option : page_.OptBatchStatus) option.SetSelected(false);
    WithdrawBatchActions(page_);
    ShowNoRuns(services_, page_);
    field_check_.CheckEdit(PageIndex::kBatch);  // deselecting is no click
  });
}

void BatchCriteria::SetDates(std::optional<platform::Date> day) {
  for (auto* date : {&page_.start_date, &page_.end_date}) date->SetValue(day);
}

}  // namespace workspace
