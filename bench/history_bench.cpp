// What a search of the letter history costs, on the server and until its rows can be shown, with 10,000,
// 100,000 and 1,000,000 letters stored; what the same history costs to make, a letter to record in it, and
// 1, 100 and 20,000 of its letters to resubmit.
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include <QCoreApplication>

#include "bench/demo_server.h"
#include "platform/agreed/letter_record.h"
#include "platform/agreed/record_layouts.h"
#include "platform/agreed/requests.h"
#include "platform/parties/request_message.h"
#include "server/requests/request_processor.h"
#include "server/setup/server_data.h"
#include "server/storage/database.h"
#include "server/storage/server_folders.h"
#include "server/wire/wire_format.h"
#include "tests/fakes/fake_rights.h"
#include "tests/fakes/fake_verifier.h"
#include "tests/fakes/manual_clock.h"
#include "tests/support/temporary_folder.h"

namespace {

constexpr int kLettersACustomer = 20;

class Nowhere : public platform::MessageTransport {
  std::string BuildMessage(const platform::RequestMessage&) override { return ""; }
  void Send(const platform::RequestMessage&, std::chrono::milliseconds) override {}
};

/// A server on a history of that many letters; made once and kept until the program ends.
struct History {
  explicit History(int letters) {
    clock.SetToday(bench::kToday);
    const auto start = std::chrono::steady_clock::now();
    server::CreateServerData({.data_folder = folder.path(),
                              .product_data_folder = std::filesystem::path(ZEMLO_SOURCE_DIR) / "data",
                              .customers = std::max(300, letters / kLettersACustomer),
                              .letters = letters,
                              .today = bench::kToday});
    const auto size = std::filesystem::file_size(server::DatabaseFile(folder.path()));
    std::cerr << letters << " letters made in "
              << std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count() << " s, "
              << size / 1'000'000 << " MB\n";
  }

  static History& Of(int letters) {
    auto& history = made[letters];
    if (!history) history = std::make_unique<History>(letters);
    return *history;
  }

  static inline std::map<int, std::unique_ptr<History>> made;

  tests::TemporaryFolder folder;
  fakes::ManualClock clock;
  fakes::FakeRights rights;
  fakes::FakeVerifier verifier;
  server::RequestProcessor processor{folder.path(), {clock, rights, verifier}};
};

std::string SearchText(const std::vector<platform::KeyItem>& keys) {
  Nowhere nowhere;
  platform::RequestMessage message(nowhere, "bench");
  message.MessageType(79);
  for (const auto& key : keys) message.AddKey(key);
  message.AddKey(platform::Criterion("key:LETTER_TYPE", "All"));
  message.AddKey(platform::Criterion("key:THIN", "YES"));
  return server::WriteRequest(message);
}

platform::KeyItem Days(const char* days) {
  auto key = platform::Criterion("key:START_DT", days);
  key.Operator = "between";
  return key;
}

server::Reply ReadOrAbort(const std::string& text) {
  auto reply = server::ReadReply(text);
  if (!reply.error.empty()) {
    std::cerr << reply.error << "\n";
    std::abort();
  }
  return reply;
}

/// Time: the server's own. Counters: the rows, and the milliseconds until they are read and sorted as the
/// page sorts them.
void Search(benchmark::State& state, const std::vector<platform::KeyItem>& keys) {
  auto& history = History::Of(static_cast<int>(state.range(0)));
  const auto request = SearchText(keys);
  double rows = 0;
  std::chrono::duration<double, std::milli> reading{};
  for (auto _ : state) {
    const auto text = history.processor.Answer(request);
    state.PauseTiming();
    const auto start = std::chrono::steady_clock::now();
    const auto reply = ReadOrAbort(text);
    if (!reply.records.empty()) {
      reply.records[0].rows->SortBy("PRNT_TS");
      rows = static_cast<double>(reply.records[0].rows->RecordCount());
    }
    reading += std::chrono::steady_clock::now() - start;
    state.ResumeTiming();
  }
  state.counters["rows"] = rows;
  state.counters["client_ms"] = benchmark::Counter(reading.count(), benchmark::Counter::kAvgIterations);
}

void Record(benchmark::State& state) {
  auto& history = History::Of(static_cast<int>(state.range(0)));
  static int number = 0;
  for (auto _ : state) {
    state.PauseTiming();
    Nowhere nowhere;
    platform::RequestMessage message(nowhere, "bench-" + std::to_string(++number));
    message.MessageType(82);
    const auto rows = std::make_shared<platform::RecordSet>(
        std::vector<std::string>(platform::kHistoryColumns.begin(), platform::kHistoryColumns.end()));
    rows->AddNew();
    for (const auto& [column, value] : std::vector<std::pair<const char*, const char*>>{
             {"ACTION", "ADD"},
             {"PRNT_STTS_CD", "F"},
             {"LST_PRNT_TS", "1900-01-01 01.01.01"},
             {"SYS_RFRNC_CD", "O"},
             {"LTR_TYP_ID", "101"},
             {"CUST_ID", "100001"},
             {"QZ_CNTY_NBR", "13"},
             {"XML_CONTEXT", "<XML_CONTEXT><CUST_ID>100001</CUST_ID></XML_CONTEXT>"}}) {
      rows->Set(column, value);
    }
    message.AddRecord(std::make_shared<platform::RequestRecord>(rows), "CORRHIST");
    const auto request = server::WriteRequest(message);
    state.ResumeTiming();
    ReadOrAbort(history.processor.Answer(request));
  }
}

std::string BatchItems(const platform::RecordSet& letters, const std::string& action, int number) {
  Nowhere nowhere;
  platform::RequestMessage message(nowhere, "items-" + action + std::to_string(number));
  message.MessageType(platform::message_type::kChange);
  const auto items = std::make_shared<platform::RecordSet>(std::vector<std::string>{"ACTION", "SEQ_NBR"});
  for (std::size_t row = 0; row < letters.RecordCount(); ++row)
    items->Append({action, letters.Get(row, "SEQ_NBR")});
  message.AddRecord(std::make_shared<platform::RequestRecord>(items), platform::record_name::kBatchItems);
  return server::WriteRequest(message);
}

/// Printed letters are given to the coming run, all in one request; taken back between. `client_ms`: until
/// the answer is read.
void Resubmit(benchmark::State& state) {
  auto& history = History::Of(static_cast<int>(state.range(0)));
  const auto letters =
      server::Database(server::DatabaseFile(history.folder.path()), server::Database::Opening::kExisting)
          .Select("SELECT SEQ_NBR FROM letter_history WHERE PRNT_STTS_CD IN ('P', 'S') LIMIT ?",
                  {state.range(1)});
  static int number = 0;
  std::chrono::duration<double, std::milli> reading{};
  for (auto _ : state) {
    state.PauseTiming();
    const auto request = BatchItems(*letters, "REB", ++number);
    state.ResumeTiming();
    const auto text = history.processor.Answer(request);
    state.PauseTiming();
    const auto start = std::chrono::steady_clock::now();
    const auto reply = ReadOrAbort(text);
    reading += std::chrono::steady_clock::now() - start;
    if (reply.records.at(0).rows->Text("OUTCOME") != platform::item_outcome::kTaken) std::abort();
    ReadOrAbort(history.processor.Answer(BatchItems(*letters, "DEL", number)));
    state.ResumeTiming();
  }
  state.counters["client_ms"] = benchmark::Counter(reading.count(), benchmark::Counter::kAvgIterations);
}

void Sizes(benchmark::internal::Benchmark* measured) {
  for (const int letters : {10'000, 100'000, 1'000'000}) measured->Arg(letters);
  measured->Unit(benchmark::kMillisecond)->UseRealTime();
}

const std::vector<platform::KeyItem> kYearAndTroop = {platform::Criterion("key:TRP_ID", "A"),
                                                      platform::Criterion("key:TRP_DIST_ID", "1"),
                                                      Days("2025-01-01 and 2025-12-31")};

BENCHMARK_CAPTURE(Search, ByCustomer, {platform::Criterion("key:CUST_ID", "100107")})->Apply(Sizes);
BENCHMARK_CAPTURE(Search, ByForm, {platform::Criterion("key:FORM_NBR", "3100428")})->Apply(Sizes);
BENCHMARK_CAPTURE(Search, ByDay, {platform::Criterion("key:START_DT", "2025-06-11")})->Apply(Sizes);
BENCHMARK_CAPTURE(Search, ByBatch, {platform::Criterion("key:BATCH_NBR", "1500")})->Apply(Sizes);
BENCHMARK_CAPTURE(Search, ByYearAndTroop, kYearAndTroop)->Apply(Sizes);
BENCHMARK(Record)->Apply(Sizes);
BENCHMARK(Resubmit)
    ->ArgsProduct({{100'000, 1'000'000}, {1, 100, 20'000}})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  History::made.clear();  // the database drivers go with the application object
  return 0;
}
