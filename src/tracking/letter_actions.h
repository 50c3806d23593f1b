#pragma once

#include <cstddef>

#include "platform/parties/services.h"
#include "tracking/letter_fetch.h"
#include "tracking/local_reprint.h"
#include "workspace/pages/tracking_page.h"

namespace tracking {

/// What the user does with the letters chosen on the tracking page.
class LetterActions {
 public:
  /// All references outlive this.
  LetterActions(const platform::Services& services, workspace::TrackingPage& page, LetterFetch& fetch,
                LocalReprint& local_reprint)
      : services_(services), page_(page), fetch_(fetch), local_reprint_(local_reprint) {}

  /// Called for a click on an option of OptLetter, and again when a chosen option is clicked once more. The
  /// letter actions are held back until the reply; a failure is reported and leaves them as they are.
  void LetterActClick(std::size_t option);

 private:
  bool Act(std::size_t option);

  const platform::Services& services_;
  workspace::TrackingPage& page_;
  LetterFetch& fetch_;
  LocalReprint& local_reprint_;
};

}  // namespace tracking
