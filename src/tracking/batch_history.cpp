#include "tracking/batch_history.h"

#include <array>
#include <optional>
#include <string>

#include "platform/agreed/requests.h"
#include "workspace/pages/batch_runs.h"

namespace tracking {

namespace {

using platform::Criterion;
using platform::KeyNamed;
using workspace::BatchPage;

namespace batch_outcome = platform::batch_outcome;
namespace request_key = platform::request_key;

struct StatusCode {
  std::size_t option;
  const char* code;
};
// The first one chosen, in this order.
constexpr auto kStatusCodes = std::to_array<StatusCode>({
    {BatchPage::kAll, batch_outcome::kAll},
    {BatchPage::kFailure, batch_outcome::kFailed},
    {BatchPage::kSuccessful, batch_outcome::kSuccessful},
    {BatchPage::kIncomplete, batch_outcome::kIncomplete},
});

std::string DayText(const platform::DateField& field) {
  return field.IsEmpty() ? "" : platform::DateText(*field.value());
}

}  // namespace

void BatchHistory::Search() {
  platform::Trap(services_, "ZEMLO_Corresp.cmdBatch_Click", [&] {
    workspace::WithdrawBatchActions(page_);
    SendBatchInq();
  });
}

void BatchHistory::SendBatchInq() {
  platform::Trap(services_, "ZEMLO_Corresp.SendBatchInq", [&] {
    envelope_.Send({.type = platform::message_type::kSearch,
                    .name = "Batch_History",
                    .keys = Keys(),
                    .status = "Requesting batch history",
                    .status_when = workspace::RequestDescription::Status::kBeforeSending});
    page_.sdgGrid.SetEnabled(false);
  });
}

std::vector<platform::KeyItem> BatchHistory::Keys() const {
  std::vector<platform::KeyItem> keys;
  AddDays(keys);
  AddStatus(keys);
  keys.push_back(Criterion(KeyNamed(request_key::kThin), "YES"));
  return keys;
}

void BatchHistory::AddDays(std::vector<platform::KeyItem>& keys) const {
  const auto name = KeyNamed(request_key::kRunDays);
  if (page_.OptBatchDate[BatchPage::kLastNight].selected()) {
    keys.push_back(Criterion(name, platform::DateText(services_.clock.Today())));
    return;
  }
  if (!page_.OptBatchDate[BatchPage::kDateRange].selected()) return;
  const auto start = DayText(page_.start_date);
  const auto end = DayText(page_.end_date);
  if (start.empty()) return;
  const bool is_range = !end.empty() && end != start;
  keys.push_back(is_range ? Criterion(name, start + std::string(platform::key_operator::kAnd) + end,
                                      platform::key_operator::kBetween)
                          : Criterion(name, start));
}

void BatchHistory::AddStatus(std::vector<platform::KeyItem>& keys) const {
  for (const auto& [option, code] : kStatusCodes) {
    if (!page_.OptBatchStatus[option].selected()) continue;
    keys.push_back(Criterion(KeyNamed(request_key::kRunStatus), code));
    return;
  }
}

void BatchHistory::FillBatchHistory(const workspace::Reply& reply) {
  platform::Trap(services_, "ZEMLO_Corresp.FillBatchHistory", [&] {
    services_.host.SetMousePointer(platform::MousePointer::kNormal);
    const auto runs = RowsOf(services_, reply, platform::record_name::kBatchRuns);
    workspace::WithdrawBatchActions(page_);  // no run of the new list is chosen
    if (!runs) {
      workspace::ShowNoRuns(services_, page_);
      services_.status.ShowStatus("No batch record found");
      return;
    }
    page_.sdgGrid.Bind(runs);
    services_.status.ShowStatus("Displaying batch history");
  });
}

void BatchHistory::sdgGrid_Click() {
  platform::Trap(services_, "ZEMLO_Correspondence.sdgGrid_Click", [&] {
    const auto& selected = page_.sdgGrid.selected_rows();
    const bool is_one = selected.size() == 1;
    if (is_one) page_.sdgGrid.MakeCurrent(selected.front());
    for (auto& option : page_.OptBatchAct) {
      option.SetEnabled(is_one);
      if (!is_one) option.SetSelected(false);
    }
  });
}

void BatchHistory::sdgGrid_RowLoaded(std::size_t row) {
  platform::Trap(services_, "ZEMLO_Corresp.sdgGrid_RowLoaded", [&] {
    auto& runs = *page_.sdgGrid.rows();
    if (runs.Text(row, "LTR_PRCS_CNT").empty() || runs.Text(row, "LTR_SCS_CNT").empty()) return;
    runs.Set(row, "LTR_FAIL_CNT",
             runs.Get(row, "LTR_PRCS_CNT").AsInteger() - runs.Get(row, "LTR_SCS_CNT").AsInteger());
  });
}

}  // namespace tracking
