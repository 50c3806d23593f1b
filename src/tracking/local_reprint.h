#pragma once

#include <functional>
#include <string>

#include "platform/services.h"
#include "tracking/letter_fetch.h"
#include "workspace/letter_data.h"
#include "workspace/messaging/letter_source.h"
#include "workspace/messaging/workspace_state.h"
#include "workspace/pages.h"
#include "workspace/print_run.h"

namespace tracking {

/// The selected letters are printed again on the local printer, one after the other.
///
/// The tracking page's list is locked while they print, so that the selection stays what the run was started
/// with.
class LocalReprint : public workspace::PrintRun {
 public:
  struct Uses {
    const platform::Services& services;
    workspace::WorkspaceState& state;
    workspace::LetterData& letter;
    workspace::Pages& pages;
    LetterFetch& fetch;
    workspace::LetterSource* batch_browser;  ///< null where there is none
  };
  explicit LocalReprint(Uses uses) : uses_(uses) {}

  /// Starts with the first selected letter of the tracking page. Returns whether its request is under way: a
  /// failure is reported.
  bool Start();
  /// The letter of the page's current row, alone.
  bool StartSingle(workspace::PageIndex page);

  void LetterPrinted(workspace::RequestDescription& message) override;
  void Stop() override;

 private:
  void Count(std::size_t letters);
  void MakeNextCurrent();

  const Uses uses_;
};

}  // namespace tracking
