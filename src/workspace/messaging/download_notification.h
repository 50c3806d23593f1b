#pragma once

#include <functional>
#include <string>
#include <utility>

#include "platform/counter.h"
#include "platform/parties/services.h"

namespace workspace {

/// Handles what the communications client says about a file: the first failed download shows a message box,
/// every one is counted, and of a file that is here now `came` is told, under the name it was asked for with.
class DownloadNotification {
 public:
  /// The references outlive this.
  DownloadNotification(const platform::Services& services, const std::string& message_title,
                       std::function<void(const std::string& source)> came)
      : services_(services), message_title_(message_title), came_(std::move(came)) {}

  /// `message` holds the elements COMMAND, STATUS and SOURCE.
  void MessageReceived(const std::string& message);

  platform::Counter failures() const { return failures_; }

 private:
  void TellOnce(const std::string& status, const std::string& source);

  const platform::Services& services_;
  const std::string& message_title_;
  const std::function<void(const std::string&)> came_;
  platform::Counter failures_;
};

}  // namespace workspace
