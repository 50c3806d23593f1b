#include "workspace/messaging/pending_request.h"

#include <utility>

#include "platform/identity.h"

namespace workspace {

std::shared_ptr<platform::RecordSet> RowsOf(const platform::Services& services, const Reply& reply,
                                            const std::string& record_name) {
  const auto record =
      services.messages.GetRecord(std::string(platform::kApplicationName), record_name, reply.message_key);
  return record == nullptr || record->Recordset()->IsEmpty() ? nullptr : record->Recordset();
}

void PendingRequest::Begin(std::string message_key, std::optional<std::string> name, LetterData letter) {
  stage_ = Stage::kBegun;
  message_key_ = std::move(message_key);
  has_handler_ = name.has_value();
  if (name) name_ = *std::move(name);
  status_.clear();
  timed_out_ = false;
  letter_ = std::move(letter);
}

void PendingRequest::Await(std::string status) {
  if (stage_ != Stage::kBegun)
    throw platform::Failure(platform::Failure::Kind::kInternal, "A reply is awaited to no request.");
  stage_ = Stage::kAwaited;
  status_ = std::move(status);
}

std::optional<Reply> PendingRequest::TakeReply(const platform::MessageComponent& messages) {
  if (!IsAwaited() || !messages.HasReply(message_key_)) return std::nullopt;
  Reply reply{has_handler_ ? name_ : "", message_key_, timed_out_, std::exchange(letter_, {})};
  stage_ = Stage::kNone;
  name_.clear();
  message_key_.clear();
  status_.clear();
  return reply;
}

}  // namespace workspace
