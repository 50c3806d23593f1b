#pragma once

#include <optional>
#include <string>

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
    bool tell_steps = false;  ///< status texts go to standard error
  };
  /// Throws Failure where the data folder has not been prepared.
  HeadlessOffice(const host::DataFolder& folder, Options options);

  /// Starts the workspace as a window does, and waits until the templates have come.
  void Start();
  /// Runs replies and downloads as they come until nothing is under way.
  void RunUntilIdle();

  /// Whether a message box or a report has refused what was asked for.
  bool refused() const { return shell_.refused() || reported_; }

  host::WindowlessShell& shell() { return shell_; }
  Office& office() { return office_; }
  workspace::ZEMLO_Corresp& workspace() { return office_.workspace(); }
  workspace::CorrespondencePage& page() { return office_.workspace().pages().correspondence; }
  const host::PrintOutcome& outcome() const { return outcome_; }

 private:
  host::EventLoop loop_;
  host::WindowlessShell shell_;
  host::WindowlessPreview preview_;
  host::PrintOutcome outcome_;
  bool reported_ = false;
  Office office_;  // last: it uses all of the above
};

}  // namespace apps
