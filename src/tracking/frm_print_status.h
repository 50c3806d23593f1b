#pragma once

#include "platform/controls/command.h"
#include "platform/controls/form.h"
#include "platform/controls/label.h"

namespace tracking {

/// How far a print run has come, and the way to end it after the letter that is printing. Modeless.
class frmPrintStatus : public platform::Form {
 public:
  frmPrintStatus() : Form("Print Status") {
    clicked_ = cancel.Click.Connect([this] { Cancel(); });
  }

  /// The user has asked for the end of the run.
  bool Cancelled = false;

  platform::Label progress;
  platform::Label letter;  ///< which one is printing; "" where it is not said
  platform::Command cancel{"Cancel Print Job"};

 protected:
  void OnLoad() override { cancel.SetEnabled(true); }
  void OnUnload() override { Cancelled = false; }

 private:
  // The letter that is printing cannot be called back: the user sees that the wish was heard.
  void Cancel() {
    Cancelled = true;
    cancel.SetEnabled(false);
    progress.SetCaption("The run ends after this letter.");
  }

  platform::Connection clicked_;
};

}  // namespace tracking
