#pragma once

#include <string>
#include <vector>

#include "platform/services.h"
#include "workspace/letter_forms.h"
#include "workspace/messaging/workspace_state.h"
#include "workspace/pages.h"

namespace workspace {

/// Says which fields keep a letter from being finished, where there is no dialog to fill them in.
class IncompleteLetterForms : public LetterForms {
 public:
  /// The references outlive this.
  IncompleteLetterForms(const platform::Services& services, const WorkspaceState& state, Pages& pages)
      : services_(services), state_(state), pages_(pages) {}

  void ShowLetterInformation(const LetterInformation& letter) override;
  /// Returns the context as it was.
  EnteredLetter EnterBookmarks(const std::string& file_name, const std::string& template_name,
                               const std::string& context) override;

 private:
  void Tell(const std::string& about_the_fields, const std::vector<std::string>& fields);

  const platform::Services& services_;
  const WorkspaceState& state_;
  Pages& pages_;
};

}  // namespace workspace
