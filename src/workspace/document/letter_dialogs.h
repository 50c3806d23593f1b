#pragma once

#include <string>

#include "platform/services.h"
#include "workspace/letter_forms.h"
#include "workspace/messaging/workspace_state.h"

namespace workspace {

/// Shows the dialogs that a letter needs on its way as modal forms of the host.
class LetterDialogs : public LetterForms {
 public:
  /// The references outlive this.
  LetterDialogs(const platform::Services& services, const WorkspaceState& state)
      : services_(services), state_(state) {}

  void ShowLetterInformation(const LetterInformation& letter) override;
  EnteredLetter EnterBookmarks(const std::string& file_name, const std::string& template_name,
                               const std::string& context) override;

 private:
  const platform::Services& services_;
  const WorkspaceState& state_;
};

}  // namespace workspace
