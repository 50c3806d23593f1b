// What a clerk waits for: the window after the program was started, and a long list after it was opened.
//
// The program starts itself again with "--window DATA" and takes the time until that process says that its
// window is painted with the first reply of the server handled; the disk is warm from the second start on.
// Without QT_QPA_PLATFORM there is no screen: what is measured is painted, but shown by nobody.
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <stdexcept>
#include <string>

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QLabel>
#include <QTimer>

#include "apps/corresp/desktop.h"
#include "composition/letter_combo.h"
#include "desktop/binders/pick_list_field.h"
#include "desktop/look/office_style.h"
#include "reference/reference_builder.h"
#include "reference/reference_database.h"
#include "tests/fakes/fake_services.h"
#include "tests/support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

constexpr int kStarts = 15;
constexpr int kEntries = 5000;
constexpr char kPainted = 'p';

fs::path ThisFolder() {
  return fs::read_symlink("/proc/self/exe").parent_path();
}

/// Whether this process has started another one: the layout process must wait for a letter.
bool HasChildren() {
  std::ifstream children("/proc/self/task/" + std::to_string(::getpid()) + "/children");
  return children.peek() != std::ifstream::traits_type::eof();
}

/// What the status bar says, as a screen reader finds it.
QString StatusOf(const QWidget& window) {
  for (const auto* label : window.findChildren<QLabel*>())
    if (label->accessibleName() == QStringLiteral("Status")) return label->text();
  return {};
}

/// The other process: opens the window, and says so on standard output once it is painted.
int ShowWindow(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setStyle(new desktop::OfficeStyle);
  apps::Desktop window{host::DataFolder(argv[2])};
  window.Open();
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, [&] {
    const bool replied = !window.office().workspace().pending_request().IsAwaited();
    if (!replied || StatusOf(window.window()) != QStringLiteral("Ready")) return;
    look.stop();
    window.window().repaint();
    if (HasChildren()) std::cerr << "A process was started before there was a letter.\n";
    std::cout << kPainted << std::flush;
    QApplication::quit();
  });
  look.start(0);
  return QApplication::exec();
}

/// Starts this program for its window; the time until it is painted.
std::chrono::duration<double> TimeToPicture(const fs::path& data) {
  std::array<int, 2> ends{};
  if (::pipe(ends.data()) != 0) std::abort();
  const std::string program = (ThisFolder() / "start_up_bench").string();
  const std::string folder = data.string();
  std::array<const char*, 4> words{program.c_str(), "--window", folder.c_str(), nullptr};
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
  posix_spawn_file_actions_addclose(&actions, ends[0]);

  const auto started = std::chrono::steady_clock::now();
  pid_t child = 0;
  const int failed = ::posix_spawn(&child, program.c_str(), &actions, nullptr,
                                   const_cast<char* const*>(words.data()), environ);
  ::close(ends[1]);
  char said = 0;
  const bool painted = failed == 0 && ::read(ends[0], &said, 1) == 1 && said == kPainted;
  const auto took = std::chrono::steady_clock::now() - started;
  ::close(ends[0]);
  posix_spawn_file_actions_destroy(&actions);
  if (failed == 0) ::waitpid(child, nullptr, 0);
  if (!painted) throw std::runtime_error("The window was not painted.");
  return took;
}

/// One data folder for all starts, as the first start of a day leaves it.
const fs::path& PreparedData() {
  static const tests::TemporaryFolder folder;
  static const bool prepared = [] {
    const auto command = (ThisFolder() / "zemlo-letters").string() + " init --demo --data " +
                         folder.path().string() + " > /dev/null";
    return std::system(command.c_str()) == 0 && TimeToPicture(folder.path()).count() > 0;
  }();
  if (!prepared) throw std::runtime_error("The data folder could not be prepared.");
  return folder.path();
}

void StartToPicture(benchmark::State& state) {
  const auto& data = PreparedData();
  for ([[maybe_unused]] auto _ : state) state.SetIterationTime(TimeToPicture(data).count());
}
BENCHMARK(StartToPicture)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(1)
    ->Repetitions(kStarts)
    ->DisplayAggregatesOnly();

/// A reference database with thousands of letter types, and the services over it.
class LongList {
 public:
  LongList() {
    fs::copy(fs::path(ZEMLO_SOURCE_DIR) / "data/reference", folder_ / "reference");
    std::ofstream letters(folder_ / "reference/letters.tsv", std::ios::app);
    for (int number = 0; number < kEntries; ++number) {
      const auto name = std::to_string(100'000 + number);
      letters << "K1\t" << name << "\tNotice of tax due " << name << "\tO\n";
    }
    letters.close();
    fakes_.settings.region = "K1";
    reference::CreateReferenceDatabase(folder_.path(), folder_ / "reference.db");
    reference_.emplace(folder_ / "reference.db", fakes_.clock);
    services_.emplace(With(fakes_.services(), *reference_));
  }
  const platform::Services& services() const { return *services_; }

 private:
  static platform::Services With(const platform::Services& others, platform::ReferenceDatabase& reference) {
    return {others.messages,       others.comm_clients,   reference,
            others.utilities,      others.print,          others.settings,
            others.settings_store, others.files,          others.clock,
            others.errors,         others.status,         others.host,
            others.print_journal,  others.template_judge, others.view_settings};
  }

  tests::TemporaryFolder folder_;
  fakes::FakeServices fakes_;
  std::optional<reference::ReferenceDatabase> reference_;
  std::optional<platform::Services> services_;
};

/// Tells when a widget has been painted.
class PaintWatch : public QObject {
 public:
  explicit PaintWatch(QWidget& widget) { widget.installEventFilter(this); }
  bool painted = false;

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    painted = painted || event->type() == QEvent::Paint;
    return false;
  }
};

void OpenAndPaint(desktop::PickListField& field) {
  const PaintWatch watch(*field.view().viewport());
  field.showPopup();
  while (!watch.painted) QApplication::processEvents();
}

void Close(desktop::PickListField& field) {
  field.hidePopup();
  QApplication::processEvents();
}

/// The first opening reads the entries from the reference database; later ones have them.
void OpenLongList(benchmark::State& state) {
  const bool first = state.range(0) == 1;
  static const LongList lists;
  for ([[maybe_unused]] auto _ : state) {
    composition::ZEMLO_LetterCombo list(lists.services(), "LETTERS");
    QWidget window;
    desktop::PickListField field(&window);
    desktop::Bind(list, field);
    window.show();
    QApplication::processEvents();
    if (!first) {
      OpenAndPaint(field);
      Close(field);
    }
    const auto started = std::chrono::steady_clock::now();
    OpenAndPaint(field);
    state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count());
    Close(field);
  }
  state.SetLabel(first ? "first time" : "again");
}
BENCHMARK(OpenLongList)
    ->Arg(1)
    ->Arg(2)
    ->ArgName("opening")
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(1)
    ->Repetitions(kStarts)
    ->DisplayAggregatesOnly();

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  if (argc == 3 && std::string(argv[1]) == "--window") return ShowWindow(argc, argv);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  const QApplication application(argc, argv);
  QApplication::setStyle(new desktop::OfficeStyle);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
