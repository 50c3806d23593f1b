#pragma once

#include <cstddef>
#include <string>

#include "platform/parties/services.h"
#include "tracking/batch_submission.h"
#include "tracking/letter_fetch.h"
#include "tracking/local_reprint.h"
#include "tracking/return_mail.h"
#include "workspace/pages/tracking_page.h"

namespace tracking {

/// What the user does with the letters chosen on the tracking page.
class LetterActions {
 public:
  /// What it works with and on; all of it outlives this.
  struct Uses {
    const platform::Services& services;
    const std::string& message_title;
    workspace::TrackingPage& page;
    LetterFetch& fetch;
    LocalReprint& local_reprint;
    BatchSubmission& batch_submission;
    ReturnMail& return_mail;
  };
  explicit LetterActions(Uses uses) : uses_(uses) {}

  /// Called for a click on an option of OptLetter, and again when a chosen option is clicked once more. The
  /// letter actions are held back until the reply; a failure is reported and leaves them as they are, and so
  /// does a question that is declined.
  void LetterActClick(std::size_t option);

 private:
  bool Act(std::size_t option);
  bool Submit(const std::string& for_what, const std::string& action);
  bool MarkReturned();
  bool IsConfirmed(const std::string& question) const;

  const Uses uses_;
};

}  // namespace tracking
