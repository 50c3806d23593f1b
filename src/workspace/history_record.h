#pragma once

#include "platform/services.h"
#include "workspace/letter_data.h"
#include "workspace/messaging/letter_request_fields.h"
#include "workspace/messaging/letter_source.h"
#include "workspace/messaging/request_envelope.h"
#include "workspace/messaging/workspace_state.h"
#include "workspace/pages.h"

namespace workspace {

/// The letter history's entry for a letter that has been printed.
class HistoryRecord {
 public:
  struct Uses {
    const platform::Services& services;
    const WorkspaceState& state;
    const LetterRequestFields& request;
    LetterData& letter;
    Pages& pages;
    const LetterSource* batch_browser;  ///< null where there is none
  };
  explicit HistoryRecord(Uses uses) : uses_(uses) {}

  /// Adds the entry of a new letter. The letter's context, which the history keeps in apostrophes, has grave
  /// accents in their place from then on. A failure is reported, and the request carries no record.
  void SendLetterHistoryADD(RequestDescription& message);
  /// Adds the change of a stored letter's entry.
  void SendLetterHistoryUPD(RequestDescription& message);

  bool IsBatchBrowserOpen() const { return uses_.batch_browser != nullptr && uses_.batch_browser->IsOpen(); }

 private:
  const Uses uses_;
};

}  // namespace workspace
