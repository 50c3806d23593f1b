#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/key_item.h"
#include "platform/parties/message_component.h"
#include "platform/parties/services.h"
#include "platform/value.h"
#include "workspace/messaging/letter_data.h"
#include "workspace/messaging/pending_request.h"

namespace workspace {

/// A record that travels with a request: rows under a record layout, each a list of assigned columns. What is
/// not assigned stays null.
struct RecordDescription {
  using Row = std::vector<std::pair<std::string, platform::Value>>;

  std::string layout;
  std::vector<Row> rows;
  /// Who fills the record: a failure to make it is reported under that name and the request is not sent. ""
  /// leaves the failure to whoever sends.
  std::string procedure = {};
};

/// A request, described. What is not said is not sent.
struct RequestDescription {
  enum class Status {
    kAfterSending,   ///< status text and pointer once the request is on its way
    kBeforeSending,  ///< while it goes
  };
  enum class SendMode { kSend, kSendAndWait };

  int type = 0;
  /// The pending request name; nothing leaves the previous one, and nobody handles the reply.
  std::optional<std::string> name = std::nullopt;
  LetterData letter = {};  ///< the one it is about, if any: its reply hands it back
  bool with_user_id = true;
  std::vector<platform::KeyItem> keys = {};  ///< they travel in this order
  std::vector<RecordDescription> records = {};
  std::string inquiry_xml = {};
  /// What the request travels under when it may have been sent before; "" gives it a key of its own.
  std::string message_key = {};

  std::string status = {};         ///< shown in the status bar; "" shows nothing
  bool waits_for_context = false;  ///< the workspace takes no commands until the reply
  Status status_when = Status::kAfterSending;
  SendMode mode = SendMode::kSend;
  /// The user goes on meanwhile: pointer and status bar stay as they are.
  bool in_background = false;
};

/// Sends requests the one way they are sent: header, keys, records, pending key and name, message text, send.
/// The pointer is the hourglass until the reply has been handled.
class RequestEnvelope {
 public:
  /// For the workspace itself. All references outlive this.
  RequestEnvelope(const platform::Services& services, PendingRequest& pending,
                  platform::ReplyListener& listener);
  /// For a dialog with a pending request, a listener and an application name of its own.
  RequestEnvelope(const platform::Services& services, PendingRequest& pending,
                  platform::ReplyListener& listener, std::string application);

  /// Sends and returns at once. Throws what the message component throws, and AbandonStep where a record
  /// could not be made; the pending request may have been replaced by then. A request that did not go
  /// out leaves no hourglass and the status "Ready", unless another reply is awaited.
  void Send(const RequestDescription& request);

 private:
  void AddHeader(platform::RequestMessage& message, const RequestDescription& request) const;
  void AddRecord(platform::RequestMessage& message, const RecordDescription& description) const;
  void SendMessage(platform::RequestMessage& message, const RequestDescription& request);
  void Announce(const RequestDescription& request) const;

  const platform::Services& services_;
  PendingRequest& pending_;
  platform::ReplyListener& listener_;
  const std::string application_;
};

}  // namespace workspace
