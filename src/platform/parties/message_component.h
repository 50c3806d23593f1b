#pragma once

#include <memory>
#include <string>

#include "platform/event.h"
#include "platform/parties/request_message.h"
#include "platform/parties/request_record.h"

namespace platform {

/// Hears the replies to the messages made by it, and to no others. All events come on the user-interface
/// thread, from the event loop.
class ReplyListener {
 public:
  virtual ~ReplyListener() = default;

  /// A new message whose reply this listener hears. The message may be dropped after it was sent.
  virtual std::unique_ptr<RequestMessage> NewMessage() = 0;
  /// A message with the key of one that was made before, also by another program: whichever of the two the
  /// server gets, and if it gets both, a change has its effect once.
  virtual std::unique_ptr<RequestMessage> NewMessageUnder(const std::string& message_key) = 0;
  /// Copies `source` (a file of the server) into `target_folder` in the background; the communications
  /// client reports the end. `option` is not used.
  virtual void DownloadFile(const std::string& source, const std::string& target_folder, int option) = 0;

  /// A reply is ready; the argument names the application the reply belongs to.
  Event<std::string> DataReady;
  /// A request has timed out; its error reply follows.
  Event<> MsgTimeout;
  /// A background synchronisation has finished.
  Event<> DataSyncComplete;
};

/// The message component: listeners, and the replies that have come.
class MessageComponent {
 public:
  virtual ~MessageComponent() = default;

  virtual std::unique_ptr<ReplyListener> NewListener() = 0;

  /// The reply rows of that record name for that message key, the first row current; null when the reply
  /// holds no such record or no such reply has come. Record names are compared without regard to case.
  virtual std::shared_ptr<RequestRecord> GetRecord(const std::string& application,
                                                   const std::string& record_name,
                                                   const std::string& message_key) = 0;
  /// Whether the reply to the message of that key has come and can be read.
  virtual bool HasReply(const std::string& message_key) const = 0;
  /// The error text that the reply of that key carries; "" when the request succeeded or no reply has come.
  /// `procedure` says who asks; it changes nothing.
  virtual std::string GetReplyError(const std::string& application, const std::string& procedure,
                                    const std::string& message_key) = 0;
};

}  // namespace platform
