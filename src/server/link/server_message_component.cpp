#include "server/link/server_message_component.h"

#include <unordered_map>
#include <utility>

#include <QUuid>

#include "platform/failure.h"
#include "platform/text.h"
#include "server/wire/reply_store.h"
#include "server/wire/wire_format.h"

namespace server {

using platform::Failure;

namespace {

std::string NewMessageKey() {
  return QUuid::createUuid().toString(QUuid::WithoutBraces).toStdString();
}

Reply ReadOrRefuse(const std::string& message_key, const std::string& text) {
  try {
    return ReadReply(text);
  } catch (const Failure& failure) {
    return {.message_key = message_key, .error = failure.what(), .records = {}};
  }
}

}  // namespace

/// Messages made and under way, and the replies that have come. User-interface thread only.
struct ServerMessageComponent::State {
  struct UnderWay {
    std::weak_ptr<platform::ReplyListener*> listener;
    std::string application;
  };

  /// Takes the message off the road; nothing where its reply has come already.
  std::optional<UnderWay> Arrive(const std::string& message_key) {
    auto node = under_way.extract(message_key);
    return node.empty() ? std::nullopt : std::optional(std::move(node.mapped()));
  }

  void Deliver(const UnderWay& message, const std::string& message_key, Reply reply) {
    const auto listener = message.listener.lock();
    if (!listener) return;
    replies.Keep(message_key, std::move(reply));
    (*listener)->DataReady(message.application);
  }

  void TimeOut(const std::string& message_key) {
    const auto message = Arrive(message_key);
    if (!message) return;
    if (const auto listener = message->listener.lock()) (*listener)->MsgTimeout();
    // A listener that went with its time-out hears no more: Deliver looks again.
    Deliver(*message, message_key,
            {.message_key = message_key,
             .error = "The application server did not answer in time. Try again.",
             .records = {}});
  }

  std::unordered_map<std::string, std::weak_ptr<platform::ReplyListener*>> made_by;
  std::unordered_map<std::string, UnderWay> under_way;
  ReplyStore replies;
};

class ServerMessageComponent::Listener : public platform::ReplyListener {
 public:
  explicit Listener(ServerMessageComponent& component) : component_(component), state_(component.state_) {}
  ~Listener() override {
    self_.reset();
    if (const auto state = state_.lock()) {
      std::erase_if(state->made_by, [](const auto& made) { return made.second.expired(); });
    }
  }

  std::unique_ptr<platform::RequestMessage> NewMessage() override { return NewMessageUnder(NewMessageKey()); }
  std::unique_ptr<platform::RequestMessage> NewMessageUnder(const std::string& message_key) override {
    component_.state_->made_by[message_key] = self_;
    return std::make_unique<platform::RequestMessage>(component_, message_key);
  }
  void DownloadFile(const std::string& source, const std::string& target_folder, int) override {
    component_.downloads_.Download(source, target_folder);
  }

 private:
  ServerMessageComponent& component_;
  const std::weak_ptr<State> state_;
  std::shared_ptr<platform::ReplyListener*> self_ = std::make_shared<platform::ReplyListener*>(this);
};

ServerMessageComponent::ServerMessageComponent(platform::EventQueue& events,
                                               CommunicationsClientProvider& downloads,
                                               const std::filesystem::path& data_folder,
                                               const ServerParties& parties)
    : state_(std::make_shared<State>()),
      events_(events),
      downloads_(downloads),
      deadlines_([this, weak = std::weak_ptr(state_)](const std::string& message_key) {
        events_.Post([weak, message_key] {
          if (const auto state = weak.lock()) state->TimeOut(message_key);
        });
      }),
      server_(data_folder, parties) {}

ServerMessageComponent::~ServerMessageComponent() = default;

std::unique_ptr<platform::ReplyListener> ServerMessageComponent::NewListener() {
  return std::make_unique<Listener>(*this);
}

std::shared_ptr<platform::RequestRecord> ServerMessageComponent::GetRecord(const std::string&,
                                                                           const std::string& record_name,
                                                                           const std::string& message_key) {
  const auto* reply = state_->replies.Find(message_key);
  if (reply == nullptr) return nullptr;
  for (const auto& record : reply->records) {
    if (!platform::EqualsIgnoringCase(record.name, record_name)) continue;
    record.rows->MoveFirst();
    return std::make_shared<platform::RequestRecord>(record.rows);
  }
  return nullptr;
}

bool ServerMessageComponent::HasReply(const std::string& message_key) const {
  return state_->replies.Find(message_key) != nullptr;
}

std::string ServerMessageComponent::GetReplyError(const std::string&, const std::string&,
                                                  const std::string& message_key) {
  const auto* reply = state_->replies.Find(message_key);
  return reply == nullptr ? "" : reply->error;
}

std::string ServerMessageComponent::BuildMessage(const platform::RequestMessage& message) {
  return WriteRequest(message);
}

void ServerMessageComponent::Send(const platform::RequestMessage& message,
                                  std::chrono::milliseconds time_out) {
  const auto& key = message.MessageKey();
  auto text = BuildMessage(message);
  if (state_->under_way.contains(key)) {
    throw Failure(Failure::Kind::kRefused, "The message \"" + key + "\" is under way already.");
  }
  const auto maker = state_->made_by.extract(key);
  state_->under_way[key] = {maker.empty() ? std::weak_ptr<platform::ReplyListener*>() : maker.mapped(),
                            message.application()};
  const auto deadline = DeadlineWatch::Clock::now() + time_out;
  deadlines_.Add(key, deadline);
  const auto answered = [this, weak = std::weak_ptr(state_), key](std::string reply_text) {
    deadlines_.Remove(key);
    events_.Post([weak, key, reply_text = std::move(reply_text)] {
      const auto state = weak.lock();
      if (!state) return;
      // Where the message is not under way any more, its time-out was its reply.
      if (const auto message_under_way = state->Arrive(key)) {
        state->Deliver(*message_under_way, key, ReadOrRefuse(key, reply_text));
      }
    });
  };
  server_.Submit(std::move(text), answered, deadline);
}

bool ServerMessageComponent::HasWorkUnderWay() const {
  return !state_->under_way.empty() || downloads_.HasWorkUnderWay();
}

}  // namespace server
