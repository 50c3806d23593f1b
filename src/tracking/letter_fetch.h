#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>

#include "platform/parties/services.h"
#include "workspace/messaging/letter_data.h"
#include "workspace/messaging/page_index.h"
#include "workspace/messaging/request_envelope.h"
#include "workspace/pages/pages.h"

namespace tracking {

/// Asks the server for the data context of a listed letter.
class LetterFetch {
 public:
  /// The number of the next letter of the batch reprint with that request name; 0 where there is none.
  using NextOfRun = std::function<std::int32_t(const std::string& action)>;

  /// All references outlive this.
  LetterFetch(const platform::Services& services, const std::string& message_title,
              workspace::RequestEnvelope& envelope, workspace::Pages& pages, NextOfRun next_of_run)
      : services_(services),
        message_title_(message_title),
        envelope_(envelope),
        pages_(pages),
        next_of_run_(std::move(next_of_run)) {}

  /// Fetches the letter of the grid's current row, or the next one of a batch reprint (kBatchReprint). The
  /// reply hands it back as its row is now; `action` is the pending request name and decides what the reply
  /// does. Returns whether the request is under way: a failure is reported, and where the page shows another
  /// customer than the letters', the user may have declined.
  bool RePrintLetter(const std::string& action, workspace::PageIndex grid) {
    return AreMeant(action, grid) && Fetch(action, grid);
  }
  /// Whether the user means the selected letters, see AreLettersMeant; a failure is a No that is reported.
  bool AreMeant(const std::string& action, workspace::PageIndex grid) const;
  /// RePrintLetter of letters that are meant.
  bool Fetch(const std::string& action, workspace::PageIndex grid);
  /// Asks for that letter. Throws what RequestEnvelope::Send throws.
  void Send(const std::string& action, workspace::LetterData letter);

 private:
  workspace::LetterData LetterOf(const std::string& action, workspace::PageIndex grid);

  const platform::Services& services_;
  const std::string& message_title_;
  workspace::RequestEnvelope& envelope_;
  workspace::Pages& pages_;
  const NextOfRun next_of_run_;
};

}  // namespace tracking
