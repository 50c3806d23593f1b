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

RequestEnvelope::RequestEnvelope(const platform::Services& services, WorkspaceState& state,
                                 platform::ReplyListener& listener)
    : RequestEnvelope(services, state, listener, std::string(platform::kApplicationName), state.timed_out,
                      /*is_dialogs=*/false) {}

RequestEnvelope::RequestEnvelope(const platform::Services& services, WorkspaceState& state,
                                 platform::ReplyListener& listener, std::string application, bool& timed_out,
                                 bool is_dialogs)
    : services_(services),
      state_(state),
      listener_(listener),
      application_(std::move(application)),
      is_dialogs_(is_dialogs),
      timed_out_(timed_out) {}

void RequestEnvelope::Send(const RequestDescription& request) {
  bool is_under_way = false;
  const AtExit put_back(services_, "RequestEnvelope.Send", [&] {
    if (is_under_way || state_.AwaitsReply()) return;  // the reply does it
    services_.status.SetReady(true);
    services_.host.SetMousePointer(platform::MousePointer::kNormal);
    if (!is_dialogs_) services_.status.ShowStatus("Ready");
  });
  const auto message =
      request.message_key.empty() ? listener_.NewMessage() : listener_.NewMessageUnder(request.message_key);
  AddHeader(*message, request);
  for (const auto& key : request.keys) message->AddKey(key);
  for (const auto& record : request.records) AddRecord(*message, record);
  if (!request.inquiry_xml.empty()) message->AddInquiryXml(request.inquiry_xml);
  MakePending(*message, request);
  SendMessage(*message, request);
  is_under_way = true;
}

void RequestEnvelope::SendMessage(platform::RequestMessage& message, const RequestDescription& request) {
  message.BuildMessage();
  const bool announce_first = request.status_when == RequestDescription::Status::kBeforeSending;
  if (announce_first) Announce(request);
  timed_out_ = false;
  if (request.mode == RequestDescription::SendMode::kSendAndWait) {
    message.SendAndWait(true, platform::RequestMessage::kTimeOut, kWaitCode);
  } else {
    message.Send();
  }
  if (!is_dialogs_) Await(message, request);
  if (!announce_first) Announce(request);
}

void RequestEnvelope::Await(const platform::RequestMessage& message, const RequestDescription& request) {
  state_.awaited_message_key = message.MessageKey();
  state_.awaited_status = request.status;
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

void RequestEnvelope::MakePending(const platform::RequestMessage& message,
                                  const RequestDescription& request) {
  state_.pending_message_key = message.MessageKey();
  state_.awaited_message_key.clear();
  if (request.name) {
    state_.pending_request_name = *request.name;
    state_.unhandled_message_key.clear();
  } else {
    state_.unhandled_message_key = message.MessageKey();
  }
}

void RequestEnvelope::Announce(const RequestDescription& request) const {
  if (request.waits_for_context) services_.status.SetReady(false);
  services_.host.SetMousePointer(platform::MousePointer::kHourglass);
  if (!request.status.empty()) services_.status.ShowStatus(request.status);
}

}  // namespace workspace
