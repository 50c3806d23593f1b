// One letter of three pages ("Payment Plan Agreement", 106) from the request for its data to its PDF:
// envelope, server, data context, what the user adds, merge, layout in a warm process, the PDF folder. What a
// clerk waits for besides is the preview's prescribed second and a half.
#include <chrono>
#include <filesystem>
#include <stdexcept>
#include <string>

#include <benchmark/benchmark.h>

#include <QCoreApplication>

#include "bench/demo_server.h"
#include "composition/preview_doc.h"
#include "host/event_loop.h"
#include "platform/xml/xml.h"
#include "server/link/communications_client.h"
#include "server/link/server_message_component.h"
#include "server/storage/server_folders.h"
#include "tests/fakes/fake_rights.h"
#include "tests/fakes/fake_services.h"
#include "tests/fakes/fake_verifier.h"
#include "tests/support/temporary_folder.h"
#include "wordprocessor/layout/pool.h"
#include "wordprocessor/printing/print_component.h"
#include "wordprocessor/printing/printer_queues.h"
#include "wordprocessor/printing/printers.h"
#include "workspace/messaging/request_envelope.h"

namespace {

const std::string kTemplate = "PLN106_2409.docx";

class NoWindow : public platform::PreviewViewer, public platform::PrintObserver {
 public:
  std::unique_ptr<platform::PreviewWindow> Open(platform::PreviewContent) override { return nullptr; }
  void LetterPrinted(const std::string& destination) override { printed = destination; }
  void LetterSaved(const std::filesystem::path&) override {}
  void LayoutUnderWay(bool) override {}
  void BookmarksNotFilled(const std::string&, const std::vector<std::string>&) override {}

  std::string printed;
};

/// Server, word processor and PDF folder on demo data.
class Workplace {
 public:
  Workplace() {
    clock_.SetToday(bench::kToday);
    fakes_.settings.template_folder = server::TemplateFolder(folder_.path()).string() + "/";
    heard_ = listener_->DataReady.Connect([this](const std::string&) { has_reply_ = true; });
  }

  /// Returns the letter's data context, the user's values filled in.
  std::string Context() {
    has_reply_ = false;
    envelope_.Send({.type = 83,
                    .name = "XMLRequest",
                    .with_user_id = false,
                    .keys = {platform::Criterion("key: LTR_TYP_ID", "106"),
                             platform::Criterion("key: POPULATE_LTR_BOOKMARKS", "Y"),
                             platform::Criterion("key: EmitFieldDescriptors", "Y"),
                             platform::Criterion("key: ExplainState", "Y")},
                    .records = {{"XML_CONTEXT_INPUT", {{{"CUST_ID", "100001"}}}}}});
    events_.RunUntil([this] { return has_reply_; });
    const auto context = RowsOf(services_, pending_.TakeReply(messages_).value(), "XML_Context");
    if (context == nullptr) throw std::runtime_error("the server gave no context");
    const auto document = platform::XmlDocument::Parse(context->FirstText()).OrFail();
    for (auto field : document.Root().Children()) {
      if (field.Name().starts_with("U_")) field.SetText("1,250.00");
    }
    return document.Root().Xml();
  }

  std::filesystem::path Print(const std::string& context) {
    composition::ZEMLO_PreviewDoc printer(services_);
    const auto file = fakes_.settings.TemplateFolder() + kTemplate;
    if (printer.PrintDocument(file, context, /*lBlnShowDialog=*/false)) return window_.printed;
    throw std::runtime_error("not printed: " + fakes_.errors.reports.back().description);
  }

 private:
  static wordprocessor::LayoutSettings Layout(const std::filesystem::path& folder) {
    auto settings = wordprocessor::LayoutSettings::ForThisProgram();
    settings.work_folder = folder / "work";
    std::filesystem::create_directories(settings.work_folder);
    return settings;
  }

  tests::TemporaryFolder folder_;
  fakes::FakeServices fakes_;
  fakes::ManualClock clock_;
  fakes::FakeRights server_rights_;
  fakes::FakeVerifier verifier_;
  host::EventLoop events_;
  NoWindow window_;
  server::CommunicationsClientProvider downloads_{events_, folder_.path()};
  server::ServerMessageComponent messages_{
      events_, downloads_, bench::WithDemoData(folder_.path()), {clock_, server_rights_, verifier_}};
  wordprocessor::LayoutPool layout_{Layout(folder_.path())};
  wordprocessor::CupsQueues queues_;
  wordprocessor::Printers printers_{queues_, folder_ / "printed", clock_};
  wordprocessor::OfficePrintComponent print_{
      {fakes_.host, events_, window_, window_, fakes_.errors, layout_, printers_},
      server::TemplateFolder(folder_.path()),
      {.printer = std::string(wordprocessor::Printers::kPdfFolder)}};
  platform::Services services_{messages_,
                               downloads_,
                               fakes_.reference,
                               fakes_.utilities,
                               print_,
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
  workspace::PendingRequest pending_;
  std::unique_ptr<platform::ReplyListener> listener_ = messages_.NewListener();
  workspace::RequestEnvelope envelope_{services_, pending_, *listener_};
  platform::Connection heard_;
  bool has_reply_ = false;
};

void ThreePageLetter(benchmark::State& state) {
  Workplace workplace;
  workplace.Print(workplace.Context());  // the layout process is warm from here on
  using Clock = std::chrono::steady_clock;
  std::chrono::duration<double, std::milli> request{0};
  std::uintmax_t bytes = 0;
  for (auto _ : state) {
    const auto start = Clock::now();
    const auto context = workplace.Context();
    request += Clock::now() - start;
    bytes = std::filesystem::file_size(workplace.Print(context));
  }
  state.counters["request_ms"] = benchmark::Counter(request.count(), benchmark::Counter::kAvgIterations);
  state.counters["pdf_bytes"] = static_cast<double>(bytes);
}
BENCHMARK(ThreePageLetter)->Unit(benchmark::kMillisecond)->MinTime(3)->UseRealTime();

}  // namespace

int main(int count, char** words) {
  const QCoreApplication application(count, words);
  benchmark::Initialize(&count, words);
  benchmark::RunSpecifiedBenchmarks();
}
