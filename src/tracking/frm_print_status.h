#pragma once

#include "platform/controls/command.h"
#include "platform/controls/form.h"
#include "platform/controls/label.h"

namespace tracking {

/// How far a batch reprint has come, and the way to end it after the letter that is printing. Modeless.
class frmPrintStatus : public platform::Form {
 public:
  frmPrintStatus() : Form("Print Status") {
    clicked_ = cancel.Click.Connect([this] { Cancelled = true; });
  }

  /// The user has asked for the end of the run.
  bool Cancelled = false;

  platform::Label progress;
  platform::Command cancel{"Cancel Print Job"};

 protected:
  void OnUnload() override { Cancelled = false; }

 private:
  platform::Connection clicked_;
};

}  // namespace tracking
