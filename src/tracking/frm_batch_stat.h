#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/controls/command.h"
#include "platform/controls/form.h"
#include "platform/controls/grid.h"
#include "platform/controls/label.h"
#include "platform/parties/services.h"
#include "tracking/run_figures.h"
#include "workspace/messaging/pending_request.h"
#include "workspace/messaging/request_envelope.h"

namespace tracking {

/// "Batch Statistics": how the letters of one nightly run split by letter type, and what their accounts owe.
/// For reading only.
///
/// Whoever shows it loads it, names the run, sets caption and figures, and has the request sent. Its replies
/// come to it alone, under an application name of its own.
class frmBatchStat : public platform::Form {
 public:
  /// All outlive the form. `pending`: the workspace's, which is the form's while it is open.
  frmBatchStat(const platform::Services& services, const std::string& message_title,
               workspace::PendingRequest& pending);
  ~frmBatchStat() override;

  /// The run's sequence number.
  void Batch_SeqNbr(std::string number) { batch_number_ = std::move(number); }
  const std::string& Batch_SeqNbr() const { return batch_number_; }

  /// Asks for the run's statistics. A failure is reported.
  void SendBatchStatInq();
  /// Shows what the reply has brought.
  void FillBatchStat(const workspace::Reply& reply);
  /// The letter type's name in this region; "" where there is none.
  std::string GetLetterType(std::int32_t id);

  RunFigures figures;
  platform::Grid sdgGrid;
  platform::Label totals;  ///< of all letter types; empty without any
  platform::Command mCmdBatch{"Close"};

 protected:
  void OnLoad() override;
  void OnUnload() override;

 private:
  void DataReady(const std::string& application);
  void RowLoaded(std::size_t row);
  void ShowTotals();
  void Leave();

  const platform::Services& services_;
  const std::string& message_title_;
  workspace::PendingRequest& pending_;
  std::unique_ptr<platform::ReplyListener> mVemtMessage_;
  workspace::RequestEnvelope envelope_;
  std::string batch_number_;
  std::string connection_text_;
  std::vector<platform::Connection> connections_;
};

}  // namespace tracking
