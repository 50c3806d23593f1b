#pragma once

#include <string>

#include "platform/counter.h"

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

  std::string message_title = {};  ///< caption of the host window: the title of every message box
  std::string host_tag = {};       ///< goes with every toolbar call

  /// Progress of a local reprint run.
  platform::Counter letters_printed = {};
  platform::Counter letters_to_print = {};

  bool dont_print = false;  ///< diagnostic details are shown
  bool timed_out = false;   ///< set by a time-out, cleared whenever a request is sent
  platform::Counter download_failures = {};
  std::string application_file_path = {};

  std::string server_template_folder = {};  ///< ends with "\" once the server has told it
  std::string template_name = {};           ///< of the current letter

  bool AwaitsReply() const { return !awaited_message_key.empty(); }
  bool ReprintIsOver() const { return letters_printed >= letters_to_print; }
};

}  // namespace workspace
