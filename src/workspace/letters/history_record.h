#pragma once

#include "platform/parties/services.h"
#include "workspace/messaging/letter_data.h"
#include "workspace/messaging/letter_source.h"
#include "workspace/messaging/request_envelope.h"

namespace workspace {

/// The letter history's entry for a letter that has been printed.
class HistoryRecord {
 public:
  /// `batch_browser` is null where there is none. Both outlive this.
  HistoryRecord(const platform::Services& services, const LetterSource* batch_browser)
      : services_(services), batch_browser_(batch_browser) {}

  /// Adds the entry of a new letter. The letter's context, which the history keeps in apostrophes, has grave
  /// accents in their place from then on. A failure is reported, and the request carries no record.
  void SendLetterHistoryADD(RequestDescription& message, LetterData& letter) const;
  /// Adds the change of a stored letter's entry.
  void SendLetterHistoryUPD(RequestDescription& message, const LetterData& letter) const;

  bool IsBatchBrowserOpen() const { return batch_browser_ != nullptr && batch_browser_->IsOpen(); }

 private:
  const platform::Services& services_;
  const LetterSource* const batch_browser_;
};

}  // namespace workspace
