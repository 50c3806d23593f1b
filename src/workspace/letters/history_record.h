#pragma once

#include "platform/parties/services.h"
#include "workspace/messaging/letter_data.h"
#include "workspace/messaging/request_envelope.h"

namespace workspace {

/// The letter history's entry for a letter that has been printed.
class HistoryRecord {
 public:
  /// `services` outlives this.
  explicit HistoryRecord(const platform::Services& services) : services_(services) {}

  /// Adds the entry of a new letter. The letter's context, which the history keeps in apostrophes, has grave
  /// accents in their place from then on. A failure is reported, and the request carries no record.
  void SendLetterHistoryADD(RequestDescription& message, LetterData& letter) const;
  /// Adds the change of a stored letter's entry.
  void SendLetterHistoryUPD(RequestDescription& message, const LetterData& letter) const;

 private:
  const platform::Services& services_;
};

}  // namespace workspace
