// What a clerk waits for in a long list: the first rows after a search, each page of rows on the way down,
// and the list in another order, searched, or copied.
//
// Each row is dressed when it is first shown, as on the tracking page, with the code tables of the reference
// database; without QT_QPA_PLATFORM there is no screen: what is measured is painted, but shown by
// nobody.
#include <algorithm>
#include <array>
#include <chrono>
#include <filesystem>
#include <functional>
#include <numeric>
#include <optional>

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QScrollBar>

#include "desktop/binders/grid_panel.h"
#include "desktop/look/office_style.h"
#include "reference/office_utilities.h"
#include "reference/reference_builder.h"
#include "reference/reference_database.h"
#include "tests/fakes/fake_rights.h"
#include "tests/fakes/fake_services.h"
#include "tests/fakes/fake_view_settings.h"
#include "tests/support/temporary_folder.h"
#include "tracking/letter_rules.h"
#include "tracking/row_format.h"
#include "workspace/pages/pages.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kLetters = 20'000;
constexpr int kRuns = 5;
constexpr QSize kWindow(1280, 800);

/// The tracking page's list with the office's own look-ups behind it.
class LetterList {
 public:
  LetterList() {
    std::filesystem::copy(std::filesystem::path(ZEMLO_SOURCE_DIR) / "data/reference", folder_ / "reference");
    fakes_.settings.region = "K1";
    reference::CreateReferenceDatabase(folder_.path(), folder_ / "reference.db");
    reference_.emplace(folder_ / "reference.db", fakes_.clock);
    utilities_.emplace(*reference_, fakes_.settings, rights_, fakes_.clock);
    services_.emplace(With(fakes_.services()));
    pages_.emplace(*services_);
    names_.emplace(*services_);
    row_format_.emplace(*services_, /*with_diagnostics=*/false, *names_, *pages_);
    row_loaded_ = grid().RowLoaded.Connect(
        [this](std::size_t row) { row_format_->sdgGrid_RowLoaded(workspace::PageIndex::kTracking, row); });
  }
  workspace::TrackingPage& page() { return pages_->tracking; }
  platform::Grid& grid() { return page().sdgGrid; }

  std::shared_ptr<platform::RecordSet> Letters() {
    std::vector<std::string> names;
    for (const auto& column : grid().columns) names.push_back(column.key);
    auto letters = std::make_shared<platform::RecordSet>(names);
    for (int number = 0; number < kLetters; ++number) {
      std::vector<platform::Value> cells;
      for (const auto& column : grid().columns) cells.push_back(CellOf(column, number));
      letters->Append(std::move(cells));
    }
    return letters;
  }

 private:
  platform::Services With(const platform::Services& others) {
    return {others.messages,      others.comm_clients,   *reference_,           *utilities_,
            others.print,         others.settings,       others.settings_store, others.files,
            others.clock,         others.errors,         others.status,         others.host,
            others.print_journal, others.template_judge, others.view_settings};
  }

  static platform::Value CellOf(const platform::Grid::Column& column, int number) {
    constexpr auto kStatuses = std::to_array<const char*>({"P", "F", "R", "M", "S"});
    const auto of = [&](std::size_t count) { return static_cast<std::size_t>(number) * 7 % count; };
    if (column.key == "FLS_BTCH_NBR") return number / 500;
    if (column.derived) return {};
    if (column.key == "SEQ_NBR") return number;
    if (column.key == "DCMT_FILE_TXT") return "ctl_0304_" + std::to_string(of(40)) + ".docx";
    if (column.key == "LST_UPDT_INSP_ID") return "DEMO0" + std::to_string(1 + of(3));
    if (column.key == "PRNT_STTS_CD") return kStatuses[of(kStatuses.size())];
    if (column.key == "SYS_RFRNC_CD") return number % 3 == 0 ? "O" : "B";
    if (column.key == "FORM_TYP_CD") return "C";
    if (column.key == "FORM_NBR") return std::to_string(3'100'000 + of(9'973));
    if (column.key.ends_with("_TS")) return "2024-03-05 02.11." + std::to_string(10 + of(49));
    return std::to_string(of(97));
  }

  tests::TemporaryFolder folder_;
  fakes::FakeServices fakes_;
  fakes::FakeRights rights_;
  std::optional<reference::ReferenceDatabase> reference_;
  std::optional<reference::OfficeUtilities> utilities_;
  std::optional<platform::Services> services_;
  std::optional<workspace::Pages> pages_;
  std::optional<workspace::LetterNames> names_;
  std::optional<tracking::RowFormat> row_format_;
  platform::Connection row_loaded_;
};

LetterList& TheList() {
  static LetterList list;
  return list;
}

double Milliseconds(Clock::duration took) {
  return std::chrono::duration<double, std::milli>(took).count();
}

/// The list in a window that is painted when it is told to.
class ListOnScreen {
 public:
  ListOnScreen() : panel(TheList().grid(), QStringLiteral("Letters found"), settings_) {
    panel.resize(kWindow);
    panel.show();
    Paint();
  }
  ~ListOnScreen() { TheList().grid().Bind(nullptr); }
  /// The rows first: what is left to paint afterwards is what changed around them.
  void Paint() {
    panel.view().viewport()->repaint();
    QApplication::processEvents();
  }
  /// How long the work and the picture after it take.
  double Time(const std::function<void()>& work) {
    const auto started = Clock::now();
    work();
    Paint();
    return Milliseconds(Clock::now() - started);
  }

 private:
  fakes::FakeViewSettings settings_;

 public:
  desktop::GridPanel panel;
};

/// From the rows to their first picture: what a search waits for after its reply.
void OpenToFirstRows(benchmark::State& state) {
  ListOnScreen screen;
  for ([[maybe_unused]] auto _ : state) {
    const auto letters = TheList().Letters();
    state.SetIterationTime(screen.Time([&] { TheList().grid().Bind(letters); }) / 1000);
  }
}
BENCHMARK(OpenToFirstRows)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(kRuns);

/// Every page of rows on the way down, each dressed when it is first shown; the counters are of one page.
void ScrollPageByPage(benchmark::State& state) {
  double longest = 0;
  double pages = 0;
  for ([[maybe_unused]] auto _ : state) {
    ListOnScreen screen;
    TheList().grid().Bind(TheList().Letters());
    screen.Paint();
    auto& bar = *screen.panel.view().verticalScrollBar();
    const auto started = Clock::now();
    while (bar.value() < bar.maximum()) {
      longest =
          std::max(longest, screen.Time([&] { bar.triggerAction(QAbstractSlider::SliderPageStepAdd); }));
      ++pages;
    }
    state.SetIterationTime(std::chrono::duration<double>(Clock::now() - started).count());
  }
  state.counters["pages"] = pages / static_cast<double>(state.iterations());
  state.counters["longest_ms"] = longest;
}
BENCHMARK(ScrollPageByPage)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(kRuns);

/// One thing done to a list of which only the first rows have been seen.
void Act(benchmark::State& state, void (*act)(ListOnScreen& screen)) {
  for ([[maybe_unused]] auto _ : state) {
    ListOnScreen screen;
    TheList().grid().Bind(TheList().Letters());
    screen.Paint();
    state.SetIterationTime(screen.Time([&] { act(screen); }) / 1000);
  }
}
BENCHMARK_CAPTURE(Act, sort_by_file, [](ListOnScreen&) { TheList().grid().SortBy("DCMT_FILE_TXT"); })
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(kRuns);
BENCHMARK_CAPTURE(Act, sort_by_derived_status,
                  [](ListOnScreen&) { TheList().grid().SortBy("PRNT_STTS_DESC"); })
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(kRuns);
BENCHMARK_CAPTURE(Act, find_first_letter_typed,
                  [](ListOnScreen& screen) {
                    screen.panel.view().find_wanted();
                    screen.panel.findChild<QLineEdit*>()->setText(QStringLiteral("7"));
                  })
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(kRuns);
BENCHMARK_CAPTURE(Act, select_all_and_copy,
                  [](ListOnScreen& screen) {
                    screen.panel.view().selectAll();
                    screen.panel.view().CopyRows();
                  })
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(kRuns);

/// The letter actions are offered anew while every letter is selected, of statuses that allow all of them.
void OfferActionsForAll(benchmark::State& state) {
  auto& page = TheList().page();
  tracking::LetterActionLists lists;
  lists.ActionPrintLocal = lists.ActionResubmit = lists.ActionPrintBatch = "PSFRM";
  ListOnScreen screen;
  page.sdgGrid.Bind(TheList().Letters());
  std::vector<std::size_t> rows(kLetters);
  std::iota(rows.begin(), rows.end(), std::size_t{0});
  page.sdgGrid.UserSelects(rows);
  for ([[maybe_unused]] auto _ : state) {
    for (std::size_t option = 0; option < page.OptLetter.size(); ++option)
      page.OptLetter[option].SetEnabled(tracking::RuleOf(option).Allows(lists, page.sdgGrid));
  }
}
BENCHMARK(OfferActionsForAll)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  const QApplication application(argc, argv);
  QApplication::setStyle(new desktop::OfficeStyle);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
