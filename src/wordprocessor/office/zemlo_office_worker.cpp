#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <string>

#include "wordprocessor/office/confinement.h"
#include "wordprocessor/office/profile.h"
#include "wordprocessor/office/protocol.h"
#include "wordprocessor/office/session.h"

// The layout process: takes orders on standard input and answers on standard output (protocol.h),
// works in the folder given to it and nowhere else, and ends when standard input ends or its parent does.

namespace wordprocessor {
namespace {

constexpr int kWrongUsage = 2;

/// Standard output for our reports alone: what libraries print there goes to standard error from now on.
int KeepReportsApart() {
  const int reports = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3);
  dup2(STDERR_FILENO, STDOUT_FILENO);
  return reports;
}

/// The memory of this process in RAM. Opened before the confinement, which closes /proc.
class ResidentMemory {
 public:
  ResidentMemory() : statm_(open("/proc/self/statm", O_RDONLY | O_CLOEXEC)) {}

  std::uint64_t Kib() const {
    char text[128] = {};
    unsigned long long pages = 0;
    if (pread(statm_, text, sizeof(text) - 1, 0) <= 0 || std::sscanf(text, "%*u %llu", &pages) != 1) return 0;
    return pages * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE)) / 1024;
  }

 private:
  int statm_;
};

LayoutReport Answer(OfficeSession& office, const LayoutOrder& order, const ResidentMemory& memory) {
  LayoutReport report{.kind = LayoutReport::Kind::kDone, .id = order.id};
  try {
    office.Layout(order.document, order.pdf);
  } catch (const std::exception& failure) {
    report.kind = LayoutReport::Kind::kFailed;
    report.why = failure.what();
  }
  report.resident_kib = memory.Kib();
  return report;
}

/// Returns the exit status.
int TakeOrders(OfficeSession& office, const ResidentMemory& memory, int reports) {
  WriteAll(reports, LineOf(LayoutReport{.kind = LayoutReport::Kind::kReady}));
  LineReader orders(STDIN_FILENO);
  while (orders.Fill()) {
    while (const auto line = orders.TakeLine()) {
      const auto order = ParseOrder(*line);
      if (!order) return kWrongUsage;
      if (!WriteAll(reports, LineOf(Answer(office, *order, memory)))) return EXIT_SUCCESS;
      if (!office.HasForeignTypefaces()) continue;
      WriteAll(reports, LineOf(LayoutReport{.kind = LayoutReport::Kind::kSpent}));
      return EXIT_SUCCESS;
    }
  }
  return EXIT_SUCCESS;
}

int Run(const std::filesystem::path& folder, std::uint64_t memory_limit, int reports) {
  try {
    const ResidentMemory memory;
    const auto program_folder = OfficeSession::FindProgramFolder();
    SeedProfile(folder / "profile");
    TieToParent();
    LimitMemory(memory_limit);
    ConfineFiles(folder, program_folder);
    ConfineCalls();
    OfficeSession office(program_folder, folder / "profile");
    return TakeOrders(office, memory, reports);
  } catch (const std::exception& failure) {
    WriteAll(reports, LineOf(LayoutReport{.kind = LayoutReport::Kind::kBroken, .why = failure.what()}));
    return EXIT_FAILURE;
  }
}

}  // namespace
}  // namespace wordprocessor

int main(int argc, char** argv) {
  if (argc < 2 || argc > 3) {
    std::fputs(
        "usage: zemlo-office-worker FOLDER [MEMORY-LIMIT-IN-BYTES]\n"
        "Started by the correspondence programs; takes orders on standard input.\n",
        stderr);
    return wordprocessor::kWrongUsage;
  }
  close_range(STDERR_FILENO + 1, ~0U, 0);
  umask(0077);  // pages and profile are for this user
  const auto memory_limit = argc == 3 ? std::strtoull(argv[2], nullptr, 10) : 0;
  // Past every handler of the office's libraries: there is nothing of theirs to keep.
  _exit(wordprocessor::Run(argv[1], memory_limit, wordprocessor::KeepReportsApart()));
}
