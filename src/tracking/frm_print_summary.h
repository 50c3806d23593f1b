#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/controls/command.h"
#include "platform/controls/form.h"
#include "platform/controls/grid.h"
#include "platform/controls/label.h"

namespace tracking {

/// A letter of a print run with which something went wrong.
struct FailedLetter {
  std::size_t position = 0;  ///< among the selected letters of the list
  std::string name;
  std::string number;
  std::string reason;
  bool is_printed = false;  ///< it needs no other print: only its record failed
};

/// What came of a print run in which letters failed: which, and why. Modal.
class frmPrintSummary : public platform::Form {
 public:
  /// `outcome` is a sentence: how many letters were printed.
  frmPrintSummary(const std::string& outcome, const std::vector<FailedLetter>& failed);

  /// The user wants those that were not printed to be printed again.
  bool PrintAgain = false;

  platform::Label outcome;
  platform::Grid letters;  ///< in the order of the run
  platform::Label reason;  ///< of the selected letter, whole
  platform::Command again{"&Print again what failed"};
  platform::Command close{"&Close"};

 protected:
  void OnActivate() override { letters.UserSelects({0}); }

 private:
  void ShowReason();

  std::vector<platform::Connection> connections_;
};

}  // namespace tracking
