#pragma once

#include <string>

#include "platform/services.h"
#include "workspace/messaging/workspace_state.h"

namespace workspace {

/// Handles what the communications client says about a file: the first failed download shows a message box,
/// every one is counted.
class DownloadNotification {
 public:
  DownloadNotification(const platform::Services& services, WorkspaceState& state)
      : services_(services), state_(state) {}

  /// `message` holds the elements COMMAND, STATUS and SOURCE.
  void MessageReceived(const std::string& message);

 private:
  void TellOnce(const std::string& status, const std::string& source);

  const platform::Services& services_;
  WorkspaceState& state_;
};

}  // namespace workspace
