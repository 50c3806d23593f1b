// What finding customers costs at the server, from the request's text to the reply's, among 10,000 and
// 1,000,000 of them; what a save adds to it, and a mark of returned mail. The last ones time the command line
// as a user starts it, beside a command that reads no customer.
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <map>
#include <memory>
#include <string>

#include <benchmark/benchmark.h>

#include <QCoreApplication>

#include "bench/demo_server.h"
#include "bench/many_customers.h"
#include "platform/agreed/letter_record.h"
#include "platform/agreed/requests.h"
#include "platform/parties/request_message.h"
#include "server/customers/customer_words.h"
#include "server/requests/request_processor.h"
#include "server/storage/database.h"
#include "server/storage/server_folders.h"
#include "server/wire/wire_format.h"
#include "tests/fakes/fake_rights.h"
#include "tests/fakes/fake_verifier.h"
#include "tests/fakes/manual_clock.h"
#include "tests/fakes/rows.h"
#include "tests/support/temporary_folder.h"

namespace {

namespace request_key = platform::request_key;

class Nowhere : public platform::MessageTransport {
  std::string BuildMessage(const platform::RequestMessage&) override { return ""; }
  void Send(const platform::RequestMessage&, std::chrono::milliseconds) override {}
};

/// A server on a register of that many customers; made once and kept until the program ends.
struct Register {
  explicit Register(int customers) {
    clock.SetToday(bench::kToday);
    const auto letters = Letters("init --demo --customers 300");
    if (std::system(letters.c_str()) != 0) std::abort();
    std::filesystem::remove_all(folder / "server");
    bench::MakeManyCustomers(folder.path(), customers);
    database = std::make_unique<server::Database>(server::DatabaseFile(folder.path()),
                                                  server::Database::Opening::kExisting);
    processor = std::make_unique<server::RequestProcessor>(folder.path(),
                                                           server::ServerParties{clock, rights, verifier});
  }

  static Register& Of(benchmark::State& state) {
    auto& made_once = made[static_cast<int>(state.range(0))];
    if (!made_once) made_once = std::make_unique<Register>(static_cast<int>(state.range(0)));
    return *made_once;
  }

  std::string Letters(const std::string& words) const {
    return (std::filesystem::read_symlink("/proc/self/exe").parent_path() / "zemlo-letters").string() + " " +
           words + " --data " + folder.path().string() + " > /dev/null";
  }

  static inline std::map<int, std::unique_ptr<Register>> made;

  tests::TemporaryFolder folder;
  fakes::ManualClock clock;
  fakes::FakeRights rights;
  fakes::FakeVerifier verifier;
  std::unique_ptr<server::Database> database;
  std::unique_ptr<server::RequestProcessor> processor;
};

std::string RequestFor(const std::string& text, int first) {
  Nowhere nowhere;
  platform::RequestMessage message(nowhere, "bench");
  message.MessageType(platform::message_type::kCustomer);
  message.AddKey(platform::Criterion(platform::KeyNamed(request_key::kCustomerWords), text,
                                     platform::key_operator::kLike));
  message.AddKey(platform::Criterion(platform::KeyNamed(request_key::kFirstRow), std::to_string(first)));
  message.AddKey(platform::Criterion(platform::KeyNamed(request_key::kLastRow), std::to_string(first + 19)));
  return server::WriteRequest(message);
}

void Find(benchmark::State& state, const std::string& text, int first) {
  auto& customers = Register::Of(state);
  const auto request = RequestFor(text, first);
  std::string reply;
  for (auto _ : state) reply = customers.processor->Answer(request);
  const auto read = server::ReadReply(reply);
  if (!read.error.empty()) {
    std::cerr << read.error << "\n";
    std::abort();
  }
  for (const auto& record : read.records) {
    if (record.name == platform::record_name::kCustomerSearch)
      state.counters["total"] = static_cast<double>(record.rows->Get("TOTAL").AsInteger());
  }
}

/// One that a customer has.
void FindTelephone(benchmark::State& state) {
  const auto number = Register::Of(state)
                          .database->Select("SELECT PHN_NBR FROM customer WHERE CUST_ID = '1000500'")
                          ->FirstText();
  Find(state, "(" + number.substr(0, 3) + ") " + number.substr(3, 3) + "-" + number.substr(6), 1);
}

/// A customer changes the last name there and back, in a transaction with the index.
void Save(benchmark::State& state) {
  auto& database = *Register::Of(state).database;
  bool there = false;
  for (auto _ : state) {
    server::Transaction transaction(database, server::Transaction::Purpose::kChanging);
    there = !there;
    database.Change("UPDATE customer SET CUST_BSNS_NM = ? WHERE CUST_ID = '1000500'",
                    {there ? "Aardvark Fuels" : "Zither Fuels"});
    server::IndexCustomer(database, "1000500");
    transaction.Commit();
  }
}

/// The same without the index: what is left of a save then.
void SaveWithoutIndex(benchmark::State& state) {
  auto& database = *Register::Of(state).database;
  bool there = false;
  for (auto _ : state) {
    server::Transaction transaction(database, server::Transaction::Purpose::kChanging);
    there = !there;
    database.Change("UPDATE customer SET MAIL_CITY = ? WHERE CUST_ID = '1000501'",
                    {there ? "Here" : "There"});
    transaction.Commit();
  }
}

void CommandLine(benchmark::State& state, const std::string& words) {
  const auto command = Register::Of(state).Letters(words);
  for (auto _ : state) {
    if (std::system(command.c_str()) != 0) std::abort();
  }
}

/// A whole save as the dialog sends it, with a verified address, from the request's text to the reply's.
void SaveRequest(benchmark::State& state) {
  auto& customers = Register::Of(state);
  static int key = 0;
  const auto id = customers.database->Select("SELECT MIN(CUST_ID) AS ID FROM customer")->FirstText();
  auto version = customers.database->Select("SELECT UPDT_NBR FROM customer WHERE CUST_ID = ?", {id})
                     ->Get("UPDT_NBR")
                     .AsInteger();
  for (auto _ : state) {
    state.PauseTiming();
    Nowhere nowhere;
    platform::RequestMessage message(nowhere, "save-" + std::to_string(++key));
    message.MessageType(platform::message_type::kSaveCustomer);
    message.AddKey(
        platform::Criterion(platform::KeyNamed(request_key::kCustomerVersion), std::to_string(version++)));
    const auto rows = fakes::RowsOf("Customer", {{{"CUST_ID", id},
                                                  {"ACTION", "UPDF"},
                                                  {"PHN_NBR", "555234" + std::to_string(1000 + key % 9000)},
                                                  {"MAIL_ADDR_1", std::to_string(key) + " Main St"},
                                                  {"MAIL_CITY", "Hartsfield"},
                                                  {"MAIL_ST", "KV"},
                                                  {"MAIL_ZIP_CD", "88312"}}});
    message.AddRecord(std::make_shared<platform::RequestRecord>(rows), "Customer");
    const auto request = server::WriteRequest(message);
    state.ResumeTiming();
    const auto reply = server::ReadReply(customers.processor->Answer(request));
    if (reply.error.empty()) continue;
    std::cerr << reply.error << "\n";
    std::abort();
  }
}

/// A letter that came back marks its customer's mailing address: another letter of another customer each
/// time.
void ReturnMail(benchmark::State& state) {
  auto& customers = Register::Of(state);
  customers.database->Change(
      R"(INSERT INTO letter_history (LTR_TYP_ID, CUST_ID, PRNT_STTS_CD, ADDR_TYP_CD, LST_PRNT_TS)
         SELECT '101', CUST_ID, 'P', 1, '2026-11-02 10.00.00' FROM customer WHERE MAIL_BAD_FLG = 'N'
         ORDER BY CUST_ID DESC LIMIT ?)",
      {std::int64_t{state.max_iterations}});
  auto letter =
      customers.database->Select("SELECT MAX(SEQ_NBR) AS LAST FROM letter_history")->Get("LAST").AsInteger();
  for (auto _ : state) {
    state.PauseTiming();
    Nowhere nowhere;
    platform::RequestMessage message(nowhere, "returned-" + std::to_string(letter));
    message.MessageType(platform::message_type::kChange);
    message.AddKey(
        platform::Criterion(platform::KeyNamed(request_key::kReturnMail), std::to_string(letter--)));
    const auto request = server::WriteRequest(message);
    state.ResumeTiming();
    const auto reply = server::ReadReply(customers.processor->Answer(request));
    if (reply.error.empty() && reply.records.at(0).rows->Text("OUTCOME") == platform::item_outcome::kTaken)
      continue;
    std::cerr << reply.error << "\n";
    std::abort();
  }
}

void Sizes(benchmark::internal::Benchmark* measured) {
  for (const int customers : {10'000, 1'000'000}) measured->Arg(customers);
  measured->Unit(benchmark::kMillisecond)->UseRealTime();
}

BENCHMARK_CAPTURE(Find, Prefix, "merr", 1)->Apply(Sizes);
BENCHMARK_CAPTURE(Find, TwoWords, "hat merr", 1)->Apply(Sizes);
BENCHMARK_CAPTURE(Find, WordAndCity, "merr oakhaven", 1)->Apply(Sizes);
BENCHMARK_CAPTURE(Find, WordAndZip, "merr 892", 1)->Apply(Sizes);
BENCHMARK(FindTelephone)->Apply(Sizes);
BENCHMARK_CAPTURE(Find, TelephonePrefix, "555-2", 1)->Apply(Sizes);
BENCHMARK_CAPTURE(Find, Account, "62-001000500-01", 1)->Apply(Sizes);
BENCHMARK_CAPTURE(Find, AccountPrefix, "62-00100", 1)->Apply(Sizes);
BENCHMARK_CAPTURE(Find, CustomerId, "1000500", 1)->Apply(Sizes);
BENCHMARK_CAPTURE(Find, OneLetter, "s", 1)->Apply(Sizes);
BENCHMARK_CAPTURE(Find, Frequent, "station", 1)->Apply(Sizes);
BENCHMARK_CAPTURE(Find, FrequentFarDown, "s", 5001)->Apply(Sizes);
BENCHMARK_CAPTURE(Find, Everybody, "62", 1)->Apply(Sizes);
BENCHMARK_CAPTURE(Find, Nobody, "zzyzx", 1)->Apply(Sizes);
BENCHMARK_CAPTURE(Find, ThreeLetters, "s f c", 1)->Apply(Sizes);
BENCHMARK(Save)->Apply(Sizes);
BENCHMARK(SaveWithoutIndex)->Apply(Sizes);
BENCHMARK(SaveRequest)->Apply(Sizes);
BENCHMARK(ReturnMail)->Apply(Sizes)->Iterations(500);
BENCHMARK_CAPTURE(CommandLine, Customers, "customers --find 'hat merr'")->Apply(Sizes);
BENCHMARK_CAPTURE(CommandLine, Types, "types")->Apply(Sizes);

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  Register::made.clear();  // the database drivers go with the application object
  return 0;
}
