// What choosing a customer costs in the window, among 10,000 and 1,000,000 of them: from the moment the
// typing rests to the first rows painted, through control, message component and server.
#include <map>
#include <memory>
#include <string>

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QPixmap>

#include "bench/many_customers.h"
#include "desktop/forms/cust_select_view.h"
#include "desktop/shell/qt_event_queue.h"
#include "server/link/communications_client.h"
#include "server/link/server_message_component.h"
#include "tests/fakes/fake_rights.h"
#include "tests/fakes/fake_services.h"
#include "tests/fakes/fake_verifier.h"
#include "tests/support/temporary_folder.h"

namespace {

std::filesystem::path WithCustomers(const std::filesystem::path& folder, int customers) {
  bench::MakeManyCustomers(folder, customers);
  return folder;
}

/// The select control on the screen, over a server on a register of that many customers; made once.
struct Window {
  explicit Window(int customers)
      : messages(events, downloads, WithCustomers(folder.path(), customers),
                 {fakes.clock, rights, verifier}) {
    view.resize(760, 420);
    view.show();
  }

  static Window& Of(benchmark::State& state) {
    auto& made_once = made[static_cast<int>(state.range(0))];
    if (!made_once) made_once = std::make_unique<Window>(static_cast<int>(state.range(0)));
    return *made_once;
  }
  /// Returns when the matches are painted.
  void Find(const std::string& text) {
    bool has_come = false;
    select.txtFind.SetText(text);
    select.TypingRests();
    const auto come = select.RowsChanged.Connect([&has_come] { has_come = true; });
    while (!has_come) QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    benchmark::DoNotOptimize(view.grab());
  }

  static inline std::map<int, std::unique_ptr<Window>> made;

  tests::TemporaryFolder folder;
  fakes::FakeServices fakes;
  fakes::FakeRights rights;
  fakes::FakeVerifier verifier;
  desktop::QtEventQueue events;
  server::CommunicationsClientProvider downloads{events, folder.path()};
  server::ServerMessageComponent messages;
  platform::Services services{messages,
                              downloads,
                              fakes.reference,
                              fakes.utilities,
                              fakes.no_print,
                              fakes.settings,
                              fakes.settings_store,
                              fakes.files,
                              fakes.clock,
                              fakes.errors,
                              fakes.status,
                              fakes.host,
                              fakes.print_journal,
                              fakes.template_judge,
                              fakes.view_settings};
  customers::ZEMLO_CustSelect select{services, {}};
  desktop::CustSelectView view{select, 10};
};

void FirstRows(benchmark::State& state, const std::string& text) {
  auto& window = Window::Of(state);
  for (auto _ : state) {
    state.PauseTiming();
    window.Find("zzyzx");  // another text in between: the same one is not asked for twice
    state.ResumeTiming();
    window.Find(text);
  }
  state.counters["rows"] = static_cast<double>(window.select.rows().size());
}

void Registers(benchmark::internal::Benchmark* measured) {
  for (const int customers : {10'000, 1'000'000}) measured->Arg(customers);
  measured->Unit(benchmark::kMillisecond)->UseRealTime();
}

BENCHMARK_CAPTURE(FirstRows, Prefix, "merr")->Apply(Registers);
BENCHMARK_CAPTURE(FirstRows, TwoWords, "hat merr")->Apply(Registers);
BENCHMARK_CAPTURE(FirstRows, Telephone, "(555) 240-1187")->Apply(Registers);
BENCHMARK_CAPTURE(FirstRows, Account, "62-001000500-01")->Apply(Registers);
BENCHMARK_CAPTURE(FirstRows, Everybody, "62")->Apply(Registers);

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  Window::made.clear();  // windows and database drivers go with the application object
  return 0;
}
