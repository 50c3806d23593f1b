#pragma once

#include <functional>
#include <string>
#include <utility>

#include "platform/parties/services.h"
#include "workspace/messaging/workspace_state.h"

namespace workspace {

/// Handles what the communications client says about a file: the first failed download shows a message box,
/// every one is counted, and of a file that is here now `came` is told, under the name it was asked for with.
class DownloadNotification {
 public:
  DownloadNotification(const platform::Services& services, WorkspaceState& state,
                       std::function<void(const std::string& source)> came)
      : services_(services), state_(state), came_(std::move(came)) {}

  /// `message` holds the elements COMMAND, STATUS and SOURCE.
  void MessageReceived(const std::string& message);

 private:
  void TellOnce(const std::string& status, const std::string& source);

  const platform::Services& services_;
  WorkspaceState& state_;
  const std::function<void(const std::string&)> came_;
};

}  // namespace workspace
