#pragma once

#include <string>

#include "platform/services.h"
#include "workspace/letter_data.h"
#include "workspace/messaging/page_index.h"
#include "workspace/messaging/request_envelope.h"
#include "workspace/pages.h"

namespace tracking {

/// Asks the server for the data context of a listed letter.
class LetterFetch {
 public:
  /// All references outlive this. `letter` is the letter at hand.
  LetterFetch(const platform::Services& services, workspace::RequestEnvelope& envelope,
              workspace::LetterData& letter, workspace::Pages& pages)
      : services_(services), envelope_(envelope), letter_(letter), pages_(pages) {}

  /// Fetches the letter of the grid's current row, which becomes the letter at hand; `action` is the pending
  /// request name and decides what the reply does. Returns whether the request is under way: a failure is
  /// reported.
  bool RePrintLetter(const std::string& action, workspace::PageIndex grid);

 private:
  std::int32_t CurrentSequenceNumber(workspace::PageIndex grid);

  const platform::Services& services_;
  workspace::RequestEnvelope& envelope_;
  workspace::LetterData& letter_;
  workspace::Pages& pages_;
};

}  // namespace tracking
