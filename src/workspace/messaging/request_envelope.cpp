#include "workspace/messaging/request_envelope.h"

#include <memory>

#include "platform/identity.h"
#include "platform/parties/request_record.h"
#include "workspace/messaging/at_exit.h"

namespace workspace {

namespace {

// The waiting send's last argument; it changes nothing.
constexpr int kWaitCode = 10;

}  // namespace

RequestEnvelope::RequestEnvelope(const platform::Services& services, PendingRequest& pending,
                                 platform::ReplyListener& listener)
    : RequestEnvelope(services, pending, listener, std::string(platform::kApplicationName)) {}

RequestEnvelope::RequestEnvelope(const platform::Services& services, PendingRequest& pending,
                                 platform::ReplyListener& listener, std::string application)
    : services_(services), pending_(pending), listener_(listener), application_(std::move(application)) {}

void RequestEnvelope::Send(const RequestDescription& request) {
  bool is_under_way = false;
  const AtExit put_back(services_, "RequestEnvelope.Send", [&] {
    if (is_under_way || pending_.IsAwaited()) return;  // the reply does it
    services_.status.SetReady(true);
    services_.host.SetMousePointer(platform::MousePointer::kNormal);
    const bool is_workspaces = application_ == platform::kApplicationName;
    if (is_workspaces) services_.status.ShowStatus("Ready");
  });
  const auto message =
      request.message_key.empty() ? listener_.NewMessage() : listener_.NewMessageUnder(request.message_key);
  AddHeader(*message, request);
  for (const auto& key : request.keys) message->AddKey(key);
  for (const auto& record : request.records) AddRecord(*message, record);
  if (!request.inquiry_xml.empty()) message->AddInquiryXml(request.inquiry_xml);
  pending_.Begin(message->MessageKey(), request.name, request.letter);
  SendMessage(*message, request);
  is_under_way = true;
}

void RequestEnvelope::SendMessage(platform::RequestMessage& message, const RequestDescription& request) {
  message.BuildMessage();
  const bool announce_first = request.status_when == RequestDescription::Status::kBeforeSending;
  if (announce_first) Announce(request);
  if (request.mode == RequestDescription::SendMode::kSendAndWait) {
    message.SendAndWait(true, platform::RequestMessage::kTimeOut, kWaitCode);
  } else {
    message.Send();
  }
  pending_.Await(request.status);
  if (!announce_first) Announce(request);
}

void RequestEnvelope::AddHeader(platform::RequestMessage& message, const RequestDescription& request) const {
  message.Application(application_);
  message.Version(std::string(platform::kVersion));
  message.MessageType(request.type);
  if (request.with_user_id) message.UserId(services_.settings.UserId());
}

void RequestEnvelope::AddRecord(platform::RequestMessage& message,
                                const RecordDescription& description) const {
  const auto add = [&] {
    auto record = std::make_shared<platform::RequestRecord>(services_.reference);
    record->Source(description.layout);
    record->Open();
    for (const auto& row : description.rows) {
      record->AddNew();
      for (const auto& [column, value] : row) record->Fields(column) = value;
      record->Update();
    }
    message.AddRecord(std::move(record), description.layout);
  };
  if (description.procedure.empty()) return add();
  if (!platform::Trap(services_, description.procedure, add)) throw platform::AbandonStep();
}

void RequestEnvelope::Announce(const RequestDescription& request) const {
  if (request.in_background) return;
  if (request.waits_for_context) services_.status.SetReady(false);
  services_.host.SetMousePointer(platform::MousePointer::kHourglass);
  if (!request.status.empty()) services_.status.ShowStatus(request.status);
}

}  // namespace workspace
