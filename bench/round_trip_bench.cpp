// What a request costs from the envelope that sends it to the handler of its reply: the wire text, the
// server's thread and back, its database, the rows of the reply. Nothing but the screen is left out.
#include <condition_variable>
#include <deque>
#include <filesystem>
#include <functional>
#include <iostream>
#include <mutex>
#include <string>

#include <benchmark/benchmark.h>

#include <QCoreApplication>

#include "bench/demo_server.h"
#include "server/link/communications_client.h"
#include "server/link/server_message_component.h"
#include "tests/fakes/fake_rights.h"
#include "tests/fakes/fake_services.h"
#include "tests/fakes/fake_verifier.h"
#include "tests/support/temporary_folder.h"
#include "workspace/messaging/reply_dispatcher.h"
#include "workspace/messaging/request_envelope.h"

namespace {

class Events : public platform::EventQueue {
 public:
  void Post(std::function<void()> work) override {
    {
      const std::lock_guard lock(mutex_);
      waiting_.push_back(std::move(work));
    }
    posted_.notify_one();
  }
  void RunOne() {
    std::unique_lock lock(mutex_);
    posted_.wait(lock, [this] { return !waiting_.empty(); });
    const auto work = std::move(waiting_.front());
    waiting_.pop_front();
    lock.unlock();
    work();
  }

 private:
  std::mutex mutex_;
  std::condition_variable posted_;
  std::deque<std::function<void()>> waiting_;  // guarded by mutex_
};

/// The workspace's messaging on a real server with demo data.
class Workspace {
 public:
  Workspace() {
    clock_.SetToday(bench::kToday);
    hearing_ = listener_->DataReady.Connect(
        [this](const std::string& application) { dispatcher_.DataReady(application); });
  }

  /// Sends the request and runs events until its handler has run. Returns the first cell of the record.
  std::string RoundTrip(const workspace::RequestDescription& request, const std::string& record) {
    record_ = record;
    handled_ = false;
    envelope_.Send(request);
    while (!handled_) events_.RunOne();
    return received_;
  }

 private:
  void Receive(const workspace::Reply& reply) {
    const auto rows = RowsOf(services_, reply, record_);
    received_ = rows ? rows->FirstText() : "";
    handled_ = true;
  }
  void Fail() {
    std::cerr << fakes_.host.messages.back().text << "\n";
    std::abort();
  }

  tests::TemporaryFolder folder_;
  fakes::FakeServices fakes_;
  fakes::ManualClock clock_;
  fakes::FakeRights server_rights_;
  fakes::FakeVerifier verifier_;
  Events events_;
  server::CommunicationsClientProvider downloads_{events_, folder_.path()};
  server::ServerMessageComponent messages_{
      events_, downloads_, bench::WithDemoData(folder_.path()), {clock_, server_rights_, verifier_}};
  platform::Services services_{messages_,
                               downloads_,
                               fakes_.reference,
                               fakes_.utilities,
                               fakes_.no_print,
                               fakes_.settings,
                               fakes_.settings_store,
                               fakes_.files,
                               clock_,
                               fakes_.errors,
                               fakes_.status,
                               fakes_.host,
                               fakes_.print_journal,
                               fakes_.template_judge,
                               fakes_.view_settings};
  const std::string message_title_ = "Bench";
  workspace::PendingRequest pending_;
  std::unique_ptr<platform::ReplyListener> listener_ = messages_.NewListener();
  workspace::RequestEnvelope envelope_{services_, pending_, *listener_};
  workspace::ReplyDispatcher dispatcher_{
      services_,
      pending_,
      message_title_,
      {{.request_name = "Bench",
        .action = [this](const workspace::Reply& reply) { Receive(reply); },
        .on_error = [this] { Fail(); },
        .always = {}}},
      [] {}};
  platform::Connection hearing_;
  std::string record_;
  std::string received_;
  bool handled_ = false;
};

workspace::RequestDescription ContextRequest() {
  return {.type = 83,
          .name = "Bench",
          .with_user_id = false,
          .keys = {platform::Criterion("key: LTR_TYP_ID", "110"),
                   platform::Criterion("key: POPULATE_LTR_BOOKMARKS", "Y"),
                   platform::Criterion("key: EmitFieldDescriptors", "Y"),
                   platform::Criterion("key: ExplainState", "Y")},
          .records = {{"XML_CONTEXT_INPUT", {{{"FORM_NBR", "3100004"}, {"FORM_TYP_CD", "C"}}}}}};
}

workspace::RequestDescription PrintedLetter(const std::string& context) {
  return {.type = 82,
          .name = "Bench",
          .records = {{"CORRHIST",
                       {{{"ACTION", "ADD"},
                         {"PRNT_STTS_CD", "F"},
                         {"LST_PRNT_TS", "1900-01-01 01.01.01"},
                         {"LTR_TYP_ID", "110"},
                         {"CUST_ID", "100001"},
                         {"XML_CONTEXT", context}}}}}};
}

void TemplateFolder(benchmark::State& state) {
  Workspace workspace;
  for (auto _ : state) {
    workspace.RoundTrip(
        {.type = 83,
         .name = "Bench",
         .inquiry_xml = "<XML_CONTEXT_INQUIRY><L_TEMPLATE_PATH></L_TEMPLATE_PATH></XML_CONTEXT_INQUIRY>"},
        "XML_Context");
  }
}
BENCHMARK(TemplateFolder)->Unit(benchmark::kMicrosecond)->UseRealTime();

void LetterContext(benchmark::State& state) {
  Workspace workspace;
  for (auto _ : state) workspace.RoundTrip(ContextRequest(), "XML_Context");
}
BENCHMARK(LetterContext)->Unit(benchmark::kMicrosecond)->UseRealTime();

void StoredContext(benchmark::State& state) {
  Workspace workspace;
  workspace.RoundTrip(PrintedLetter(workspace.RoundTrip(ContextRequest(), "XML_Context")), "CORRHIST");
  for (auto _ : state) {
    workspace.RoundTrip({.type = 83, .name = "Bench", .keys = {platform::Criterion("key:FetchContext", "1")}},
                        "XML_CONTEXT");
  }
}
BENCHMARK(StoredContext)->Unit(benchmark::kMicrosecond)->UseRealTime();

// Waits for the disk: the reply to a change says that it is there to stay.
void RecordedLetter(benchmark::State& state) {
  Workspace workspace;
  const auto context = workspace.RoundTrip(ContextRequest(), "XML_Context");
  for (auto _ : state) workspace.RoundTrip(PrintedLetter(context), "CORRHIST");
}
BENCHMARK(RecordedLetter)->Unit(benchmark::kMicrosecond)->UseRealTime();

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
