#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/failure.h"
#include "platform/parties/message_component.h"
#include "platform/text.h"
#include "tests/fakes/journal.h"
#include "tests/fakes/manual_event_queue.h"
#include "tests/fakes/sent_request.h"

namespace fakes {

/// What a reply brings.
struct ScriptedReply {
  std::vector<std::pair<std::string, std::shared_ptr<platform::RecordSet>>> records;
  std::string error;       ///< "" for a request that succeeded
  bool times_out = false;  ///< MsgTimeout comes first

  static ScriptedReply With(std::string record_name, const std::vector<Row>& rows) {
    auto set = RowsOf(record_name, rows);
    return {{{std::move(record_name), std::move(set)}}, "", false};
  }
  ScriptedReply And(std::string record_name, const std::vector<Row>& rows) && {
    auto set = RowsOf(record_name, rows);
    records.emplace_back(std::move(record_name), std::move(set));
    return std::move(*this);
  }
};

/// The message component with a server behind it that writes down what it is sent and replies what it is
/// told.
///
/// Replies come when the test runs the event queue, to the listener whose message they answer.
class ScriptedServer : public platform::MessageComponent {
 public:
  struct Download {
    std::string source;
    std::string target_folder;
  };

  explicit ScriptedServer(ManualEventQueue& queue, Journal* journal = nullptr)
      : queue_(queue), journal_(journal) {}

  /// Everything that was sent, oldest first.
  std::vector<SentRequest> requests;
  std::vector<Download> downloads;
  /// Answers each request as it is sent, where set and where it returns a reply.
  std::function<std::optional<ScriptedReply>(const SentRequest&)> answers;
  /// What DownloadFile and Send do besides writing down; may throw.
  std::function<void(const Download&)> on_download;
  std::function<void(const SentRequest&)> on_send;

  /// Throws Failure kNotFound where nothing was sent.
  const SentRequest& LastRequest() const {
    if (requests.empty()) throw platform::Failure(platform::Failure::Kind::kNotFound, "No request was sent.");
    return requests.back();
  }

  // The reply to the last request, or to the one with that message key.
  void Reply(ScriptedReply reply, std::optional<std::string> message_key = std::nullopt) {
    const auto key = message_key.value_or(LastRequest().message_key);
    queue_.Post([this, key, reply = std::move(reply)] { Deliver(key, reply); });
  }
  void ReplyWith(std::string record_name, const std::vector<Row>& rows) {
    Reply(ScriptedReply::With(std::move(record_name), rows));
  }
  void ReplyWithNothing() { Reply({}); }
  void ReplyWithError(std::string text) { Reply({{}, std::move(text), false}); }
  void TimesOut(std::string text = "The server did not answer.") { Reply({{}, std::move(text), true}); }

  /// DataReady for another application, at every listener.
  void ReplyForApplication(std::string application) {
    queue_.Post([this, application] {
      for (auto* listener : std::set<Listener*>(listeners_)) listener->DataReady(application);
    });
  }
  void CompleteSynchronisation() {
    queue_.Post([this] {
      for (auto* listener : std::set<Listener*>(listeners_)) listener->DataSyncComplete();
    });
  }

  std::unique_ptr<platform::ReplyListener> NewListener() override {
    if (journal_ != nullptr) journal_->Add("new listener");
    return std::make_unique<Listener>(*this);
  }
  std::shared_ptr<platform::RequestRecord> GetRecord(const std::string& application,
                                                     const std::string& record_name,
                                                     const std::string& message_key) override {
    const auto* reply = FindReply(application, message_key);
    if (reply == nullptr) return nullptr;
    for (const auto& [name, rows] : reply->records) {
      if (!platform::EqualsIgnoringCase(name, record_name)) continue;
      rows->MoveFirst();
      return std::make_shared<platform::RequestRecord>(rows);
    }
    return nullptr;
  }
  bool HasReply(const std::string& message_key) const override { return replies_.contains(message_key); }
  std::string GetReplyError(const std::string& application, const std::string& procedure,
                            const std::string& message_key) override {
    error_askers.push_back(procedure);
    const auto* reply = FindReply(application, message_key);
    return reply == nullptr ? "" : reply->error;
  }
  /// The procedures that asked for a reply's error.
  std::vector<std::string> error_askers;

 private:
  class Listener : public platform::ReplyListener, public platform::MessageTransport {
   public:
    explicit Listener(ScriptedServer& server) : server_(server) { server_.listeners_.insert(this); }
    ~Listener() override { server_.listeners_.erase(this); }

    std::unique_ptr<platform::RequestMessage> NewMessage() override {
      return NewMessageUnder("MSG" + std::to_string(++server_.last_key_));
    }
    std::unique_ptr<platform::RequestMessage> NewMessageUnder(const std::string& key) override {
      server_.owners_[key] = this;
      return std::make_unique<platform::RequestMessage>(*this, key);
    }
    void DownloadFile(const std::string& source, const std::string& target_folder, int) override {
      server_.downloads.push_back({source, target_folder});
      if (server_.on_download) server_.on_download(server_.downloads.back());
    }
    std::string BuildMessage(const platform::RequestMessage& message) override {
      server_.built_.insert(message.MessageKey());
      return message.MessageKey();
    }
    void Send(const platform::RequestMessage& message, std::chrono::milliseconds time_out) override {
      server_.Take(message, time_out);
    }

   private:
    ScriptedServer& server_;
  };

  void Take(const platform::RequestMessage& message, std::chrono::milliseconds time_out) {
    auto request = WriteDown(message, time_out);
    request.was_built = built_.contains(request.message_key);
    if (on_send) on_send(request);
    requests.push_back(request);
    if (journal_ != nullptr) journal_->Add("send type " + std::to_string(request.type));
    if (!answers) return;
    if (auto reply = answers(request)) Reply(std::move(*reply), request.message_key);
  }
  void Deliver(const std::string& key, const ScriptedReply& reply) {
    auto* const listener = owners_[key];
    if (!listeners_.contains(listener)) return;
    replies_[key] = reply;
    if (reply.times_out) listener->MsgTimeout();
    if (!listeners_.contains(listener)) return;
    listener->DataReady(ApplicationOf(key));
  }
  std::string ApplicationOf(const std::string& key) const {
    const auto request = std::find_if(requests.begin(), requests.end(),
                                      [&](const SentRequest& sent) { return sent.message_key == key; });
    return request == requests.end() ? "" : request->application;
  }
  const ScriptedReply* FindReply(const std::string& application, const std::string& key) const {
    const auto reply = replies_.find(key);
    if (reply == replies_.end() || ApplicationOf(key) != application) return nullptr;
    return &reply->second;
  }

  ManualEventQueue& queue_;
  Journal* journal_;
  int last_key_ = 0;
  std::set<Listener*> listeners_;
  std::map<std::string, Listener*> owners_;
  std::set<std::string> built_;
  std::map<std::string, ScriptedReply> replies_;
};

}  // namespace fakes
