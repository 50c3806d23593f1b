#pragma once

#include <cstddef>
#include <vector>

#include "platform/key_item.h"
#include "platform/parties/services.h"
#include "workspace/messaging/request_envelope.h"
#include "workspace/pages/batch_page.h"

namespace tracking {

/// The nightly batch runs on the batch page: searched, listed, chosen.
class BatchHistory {
 public:
  /// All outlive this.
  BatchHistory(const platform::Services& services, workspace::RequestEnvelope& envelope,
               workspace::BatchPage& page)
      : services_(services), envelope_(envelope), page_(page) {}

  /// "Search": nothing can be done with the runs listed before.
  void Search();
  /// Asks for the runs that the page's criteria mean; the list is held back until the reply. A failure is
  /// reported.
  void SendBatchInq();
  /// Lists what the reply brings, from the first run.
  void FillBatchHistory(const workspace::Reply& reply);
  /// The selection has changed: one run can be acted on, and becomes the current row.
  void sdgGrid_Click();
  /// A run's failures are what it processed without success, where both are known.
  void sdgGrid_RowLoaded(std::size_t row);

 private:
  std::vector<platform::KeyItem> Keys() const;
  void AddDays(std::vector<platform::KeyItem>& keys) const;
  void AddStatus(std::vector<platform::KeyItem>& keys) const;

  const platform::Services& services_;
  workspace::RequestEnvelope& envelope_;
  workspace::BatchPage& page_;
};

}  // namespace tracking
