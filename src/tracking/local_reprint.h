#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/counter.h"
#include "platform/parties/services.h"
#include "tracking/frm_print_summary.h"
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
/// well, and then once for the printer; while they print their progress is shown and the user may end the
/// run. The tracking page's list is locked meanwhile, so that the selection stays what the run was started
/// with. Decision [run-asked].
///
/// A letter that fails through a fault of its own is passed over; where the printer or the server is gone the
/// run ends. At the end a summary names what failed, and may print it again. Decision [run-ends].
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
  void LetterFailed(const platform::PrintFault& fault) override;
  void Stop(const std::string& reason) override;
  /// The reply to a letter's request is an error. Returns whether the run of several goes on, or has come to
  /// its last letter: the summary tells the error then, and nobody else has to.
  bool TakesError(const workspace::Reply& reply, const std::string& error);
  /// A reply has been handled: where it ended a run of several letters, says how many were printed, and shows
  /// the summary where some failed.
  void ReplyHandled();
  /// Whether the letter that has been fetched is to be printed: the user has not ended the run.
  bool GoesOn() { return !progress_.TakeCancellation(); }
  /// Whether no letter is left to print: also where no run has been started.
  bool IsOver() const { return at_ >= positions_.size(); }

 private:
  using Positions = std::vector<std::size_t>;  // among the selected letters

  bool IsConfirmed(std::size_t letters);
  std::string TypesOfSelected();
  bool Begin(Positions positions);
  /// Asks for the printer. A failure is a No that is reported.
  bool IsPrinterChosen(std::size_t letters) const;
  void Count(Positions positions);
  void FetchNext();
  void NoteFailure(std::string reason);
  void ShowProgress(const std::string& text);
  std::string Reached() const;
  std::string NameOf(std::size_t position);
  std::string TextOf(std::size_t position, std::string_view column) const;
  workspace::LetterData MakeCurrent(std::size_t position);
  std::string Outcome() const;
  void ShowSummary();

  const Uses uses_;
  RunProgress progress_;
  Positions positions_;        // of the run's letters; none once it has ended
  std::size_t at_ = 0;         // which of them is being fetched or printed
  platform::Counter printed_;  // so far
  std::int16_t wanted_ = 0;    // letters of the run, until it ends
  bool with_record_ = false;   // the request that is under way records the letter before, too
  std::string last_error_;     // of the server, in this run
  std::vector<FailedLetter> failed_;
  std::string end_;  // what is to be told of a run that has ended
};

}  // namespace tracking
