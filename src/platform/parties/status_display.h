#pragma once

#include <string_view>

namespace platform {

/// The host's status bar and toolbar.
class StatusDisplay {
 public:
  virtual ~StatusDisplay() = default;

  /// A command of the user begins: what is still shown of the ones before is out of date.
  virtual void CommandBegins() = 0;
  virtual void ShowStatus(std::string_view text) = 0;
  /// A plain sentence beside the status text, and beside the message box that follows: what the system's
  /// given words leave open. It stands until the next status text. Decision [given-texts].
  virtual void ShowReason(std::string_view text) = 0;
  /// False while the workspace waits for a letter's data, true when it takes commands.
  virtual void SetReady(bool ready) = 0;
  /// `host_tag` is the tag text of the host window (empty until the workspace was shown).
  virtual void EnableToolbarButton(int button_index, bool enabled, std::string_view host_tag) = 0;
};

}  // namespace platform
