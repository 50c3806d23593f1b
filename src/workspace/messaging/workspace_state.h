#pragma once

#include <string>

namespace workspace {

/// What all parts of one workspace, and its dialogs, share.
///
/// There is one pending request at a time: who sends one replaces the pending name and key, and a reply to
/// the one before is ignored.
struct WorkspaceState {
  std::string pending_request_name = {};  ///< decides who handles the next reply
  std::string pending_message_key = {};   ///< fetches the reply
  /// Key of a request whose reply nobody handles; it left the pending name as it was. "" when there is none.
  std::string unhandled_message_key = {};
  /// Key of the workspace's own request whose reply is still to come, and the status text that says so. ""
  /// while none is.
  std::string awaited_message_key = {};
  std::string awaited_status = {};

  bool timed_out = false;  ///< set by a time-out, cleared whenever a request is sent

  bool AwaitsReply() const { return !awaited_message_key.empty(); }
};

}  // namespace workspace
