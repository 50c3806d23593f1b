#include "tracking/batch_actions.h"

#include "platform/agreed/requests.h"
#include "tracking/frm_batch_stat.h"

namespace tracking {

using workspace::BatchPage;

void BatchActions::BatchActClick(std::size_t option) {
  platform::Trap(services_, "ZEMLO_Correspondence.BatchActClick", [&] {
    const auto& runs = page_.sdgGrid.rows();
    if (!runs || !runs->CurrentRow())
      throw platform::Failure(platform::Failure::Kind::kNotFound,
                              "No batch run is selected. Select one in the list.");
    page_.sdgGrid.ShowCurrent();
    page_.sdgGrid.EnsureRowLoaded(*runs->CurrentRow());
    if (option == BatchPage::kResubmitBatch) ResubmitBatch();
    if (option == BatchPage::kBatchStatistics) ShowStatistics();
  });
}

void BatchActions::ResubmitBatch() {
  const auto answer = services_.host.ShowMessage(
      {"Should the whole batch be resubmitted?", platform::MessageIcon::kQuestion, message_title_,
       platform::MessageButtons::kYesNo, platform::MessageAnswer::kNo});
  if (answer != platform::MessageAnswer::kYes) return;
  envelope_.Send({.type = platform::message_type::kChange,
                  .name = "Batch_Reprint",
                  .keys = {platform::Criterion(platform::KeyNamed(platform::request_key::kReprintBatch),
                                               page_.sdgGrid.rows()->Text("BTCH_SEQ_NBR"))},
                  .status = "Send reprint batch request"});
}

void BatchActions::ShowStatistics() {
  services_.status.ShowStatus("Requesting batch statistics.");
  services_.host.SetMousePointer(platform::MousePointer::kHourglass);
  const auto& runs = *page_.sdgGrid.rows();
  frmBatchStat form(services_, message_title_, pending_);
  form.Load();
  form.Batch_SeqNbr(runs.Text("BTCH_SEQ_NBR"));
  form.SetCaption(RunCaption("Batch Statistics", runs));
  form.figures.Take(runs);
  form.SendBatchStatInq();
  services_.host.SetMousePointer(platform::MousePointer::kNormal);
  services_.host.ShowModal(form);
}

}  // namespace tracking
