#pragma once

#include <string>

#include "platform/parties/services.h"
#include "tracking/frm_print_status.h"

namespace tracking {

/// How far a print run has come, on the screen, and whether the user has ended it. A form that the user
/// closes without cancelling the run is shown again with the next progress.
class RunProgress {
 public:
  /// `services` outlives this.
  explicit RunProgress(const platform::Services& services) : services_(services) {}

  /// Another run starts; nothing is shown yet.
  void Begin();
  /// Shows the texts, without blocking; `letter` says which one is printing, "" nothing. A cancelled run
  /// shows nothing any more. Throws Failure where the host cannot show it.
  void Show(const std::string& text, const std::string& letter = {});
  bool IsShown() const { return form_.shown(); }
  /// The run is at a place where it can end: a wish of the user to cancel takes effect, and the form goes.
  /// Returns whether the run is cancelled.
  bool TakeCancellation();
  bool is_cancelled() const { return is_cancelled_; }
  /// The run is cancelled, by what went wrong for instance.
  void Cancel();
  /// Takes the form from the screen.
  void Close();

 private:
  const platform::Services& services_;
  frmPrintStatus form_;
  bool is_cancelled_ = false;
};

}  // namespace tracking
