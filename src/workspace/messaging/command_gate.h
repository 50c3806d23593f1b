#pragma once

#include <functional>

#include "platform/parties/services.h"
#include "workspace/messaging/pending_request.h"

namespace workspace {

/// Holds back the commands that would send another request while a reply is awaited: the newer request would
/// replace the pending one, and with it the fate of the first. What handlers send passes by it.
/// Decision [one-request].
class CommandGate {
 public:
  /// The references outlive this.
  CommandGate(const platform::Services& services, const PendingRequest& pending)
      : services_(services), pending_(pending) {}

  /// Runs a command of the user. While a reply is awaited it is dropped, and the status bar says again what
  /// is waited for.
  void Run(const std::function<void()>& command) const {
    if (!pending_.IsAwaited()) return command();
    if (!pending_.status().empty()) services_.status.ShowStatus(pending_.status());
  }

  /// The same for what the user presses: notices of what was pressed before are out of date.
  void RunPressed(const std::function<void()>& command) const {
    Run([&] {
      services_.status.CommandBegins();
      command();
    });
  }

 private:
  const platform::Services& services_;
  const PendingRequest& pending_;
};

}  // namespace workspace
