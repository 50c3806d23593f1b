#pragma once

#include <cstddef>
#include <string>

#include "platform/parties/services.h"
#include "workspace/messaging/request_envelope.h"
#include "workspace/pages/batch_page.h"

namespace tracking {

/// What can be done with the batch run that is chosen on the batch page.
class BatchActions {
 public:
  /// All outlive this.
  BatchActions(const platform::Services& services, const std::string& message_title,
               workspace::PendingRequest& pending, workspace::RequestEnvelope& envelope,
               workspace::BatchPage& page)
      : services_(services),
        message_title_(message_title),
        pending_(pending),
        envelope_(envelope),
        page_(page) {}

  /// One of the batch page's options (BatchPage::OptBatchAct). A failure is reported.
  void BatchActClick(std::size_t option);

 private:
  void ResubmitBatch();
  void ShowStatistics();

  const platform::Services& services_;
  const std::string& message_title_;
  workspace::PendingRequest& pending_;
  workspace::RequestEnvelope& envelope_;
  workspace::BatchPage& page_;
};

}  // namespace tracking
