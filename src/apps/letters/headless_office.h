#pragma once

#include <optional>
#include <set>
#include <string>

#include "apps/letters/letter_entries.h"
#include "apps/office.h"
#include "host/event_loop.h"
#include "host/windowless_preview.h"
#include "host/windowless_shell.h"

namespace apps {

/// The office without a window: the workspace of one data folder, and the host that answers for it.
class HeadlessOffice {
 public:
  struct Options {
    host::WindowlessShell::Answers answers;
    host::WindowlessPreview::Wish preview = host::WindowlessPreview::Wish::kClose;
    LetterEntries entries;         ///< for the form in which a letter is completed
    bool tell_steps = false;       ///< status texts are notices
    bool tell_left_behind = true;  ///< a notice says so where letters wait for their record
  };
  /// Throws Failure where the data folder has not been prepared.
  HeadlessOffice(const host::DataFolder& folder, Options options);

  /// Starts the workspace as a window does, and waits until the templates have come.
  void Start();
  /// Runs replies and downloads as they come until nothing is under way.
  void RunUntilIdle();

  /// Whether a message box or a report has refused what was asked for, or the entries did not fit.
  bool refused() const { return shell_.refused() || reported_ || entries_refused_; }
  /// Whether a letter asked for what only the user knows. Where it did not, entries that were given have
  /// found no use, and its preview was only closed.
  bool asked_for_entries() const { return asked_for_entries_; }
  /// Whether the server has confirmed the record of the letter that was printed or saved, of each one.
  bool recorded() const { return recorded_ > 0 && not_recorded_ == 0; }

  host::WindowlessShell& shell() { return shell_; }
  Office& office() { return office_; }
  workspace::ZEMLO_Corresp& workspace() { return office_.workspace(); }
  workspace::CorrespondencePage& page() { return office_.workspace().pages().correspondence; }
  const host::PrintOutcome& outcome() const { return outcome_; }

 private:
  void TellReport(const std::string& description, const std::string& procedure);
  bool AnswerLetterForm(platform::Form& form);
  void CompleteLetter(composition::frmLetter& form);
  void TellOtherFaults();
  void TellLettersLeftBehind() const;

  const host::DataFolder folder_;
  const Options options_;
  host::EventLoop loop_;
  host::WindowlessShell shell_;
  host::WindowlessPreview preview_;
  host::PrintOutcome outcome_;
  bool reported_ = false;
  std::string last_report_;
  bool has_started_ = false;
  std::set<std::string> other_faults_;  // to tell after the start, where none of them has refused
  bool asked_for_entries_ = false;
  bool entries_refused_ = false;
  int recorded_ = 0;
  int not_recorded_ = 0;
  Office office_;  // it uses all of the above
  platform::Connection settled_;
};

}  // namespace apps
