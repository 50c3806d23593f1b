#pragma once

#include <cstdint>
#include <string>

#include "platform/counter.h"
#include "platform/parties/services.h"
#include "tracking/letter_fetch.h"
#include "tracking/run_progress.h"
#include "workspace/letters/letter_names.h"
#include "workspace/letters/print_run.h"
#include "workspace/messaging/letter_data.h"
#include "workspace/messaging/letter_source.h"
#include "workspace/messaging/pending_request.h"
#include "workspace/pages/pages.h"

namespace tracking {

/// The selected letters are printed again on the local printer, one after the other.
///
/// More than one letter is asked about first, with how many there are, more than ten with their types as
/// well; while they print their progress is shown and the user may end the run. The tracking page's list is
/// locked meanwhile, so that the selection stays what the run was started with. Decision [run-asked].
class LocalReprint : public workspace::PrintRun {
 public:
  struct Uses {
    const platform::Services& services;
    const workspace::PendingRequest& pending;
    const std::string& message_title;
    workspace::Pages& pages;
    LetterFetch& fetch;
    workspace::LetterNames& names;
    workspace::LetterSource* batch_browser;  ///< null where there is none
  };
  explicit LocalReprint(Uses uses) : uses_(uses), progress_(uses.services) {}

  /// Starts with the first selected letter of the tracking page. Returns whether its request is under way:
  /// the user may have declined, and a failure is reported.
  bool Start();
  /// The letter of the page's current row, alone.
  bool StartSingle(workspace::PageIndex page);

  void LetterPrinted(workspace::RequestDescription& message) override;
  void Stop() override;
  /// A reply has been handled: where it ended a run of several letters, says how many were printed.
  void ReplyHandled();
  /// Whether the letter that has been fetched is to be printed: the user has not ended the run.
  bool GoesOn() { return !progress_.TakeCancellation(); }
  /// Whether no letter is left to print: also where no run has been started.
  bool IsOver() const { return printed_ >= to_print_; }

 private:
  bool IsConfirmed(std::size_t letters);
  std::string TypesOfSelected();
  void Count(std::size_t letters);
  void ShowProgress(const std::string& text);
  workspace::LetterData MakeNextCurrent();

  const Uses uses_;
  RunProgress progress_;
  platform::Counter printed_;   // so far
  platform::Counter to_print_;  // with those; no more than are printed once the run has ended
  std::int16_t wanted_ = 0;     // letters of the run, until it ends
  std::string end_;             // what is to be told of a run that has ended
};

}  // namespace tracking
