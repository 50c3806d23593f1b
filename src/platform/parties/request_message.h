#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/key_item.h"
#include "platform/parties/request_record.h"

namespace platform {

class RequestMessage;

/// The message component's way to the application server.
class MessageTransport {
 public:
  virtual ~MessageTransport() = default;

  /// Composes the outgoing text. Throws Failure kRefused where the message cannot be written down.
  virtual std::string BuildMessage(const RequestMessage& message) = 0;
  /// Hands the message over and returns at once; exactly one reply follows, from the event loop. After
  /// `time_out` without an answer MsgTimeout comes first, then an error reply.
  virtual void Send(const RequestMessage& message, std::chrono::milliseconds time_out) = 0;
};

/// One request under way to the application server. A new one for each request; never sent twice.
class RequestMessage {
 public:
  struct NamedRecord {
    std::string name;
    std::shared_ptr<RequestRecord> record;
  };

  /// `transport` outlives the message. `message_key` is unique among all messages of all programs.
  RequestMessage(MessageTransport& transport, std::string message_key)
      : transport_(transport), message_key_(std::move(message_key)) {}

  void Application(std::string name) { application_ = std::move(name); }
  void Version(std::string version) { version_ = std::move(version); }
  void MessageType(int code) { message_type_ = code; }
  void UserId(std::string id) { user_id_ = std::move(id); }
  /// Keys travel in the order added.
  void AddKey(KeyItem key) { keys_.push_back(std::move(key)); }
  void AddRecord(std::shared_ptr<RequestRecord> record, std::string name) {
    records_.push_back({std::move(name), std::move(record)});
  }
  void AddInquiryXml(std::string xml) { inquiry_xml_ = std::move(xml); }

  /// Unique key of this request; the same key identifies its reply.
  const std::string& MessageKey() const { return message_key_; }
  std::string BuildMessage() { return transport_.BuildMessage(*this); }
  void Send() { transport_.Send(*this, kTimeOut); }
  /// Sends like Send and returns at once, the time-out armed. `wait` and `code` change nothing.
  void SendAndWait(const bool& wait, const std::chrono::milliseconds& time_out, const int& code) {
    static_cast<void>(wait);
    static_cast<void>(code);
    transport_.Send(*this, time_out);
  }

  // What was put in; "" and empty where nothing was.
  const std::string& application() const { return application_; }
  const std::string& version() const { return version_; }
  int message_type() const { return message_type_; }
  const std::string& user_id() const { return user_id_; }
  const std::vector<KeyItem>& keys() const { return keys_; }
  const std::vector<NamedRecord>& records() const { return records_; }
  const std::string& inquiry_xml() const { return inquiry_xml_; }

  /// How long an answer may take when the sender says nothing.
  static constexpr std::chrono::milliseconds kTimeOut{180'000};

 private:
  MessageTransport& transport_;
  const std::string message_key_;
  std::string application_;
  std::string version_;
  int message_type_ = 0;
  std::string user_id_;
  std::vector<KeyItem> keys_;
  std::vector<NamedRecord> records_;
  std::string inquiry_xml_;
};

}  // namespace platform
