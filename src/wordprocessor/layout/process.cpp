#include "wordprocessor/layout/process.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <system_error>
#include <utility>
#include <vector>

#include "platform/child_process.h"
#include "platform/failure.h"

namespace wordprocessor {
namespace {

using platform::Failure;

// What the process learns of this one's surroundings.
constexpr auto kPassedOn = std::to_array<const char*>({"TZ", "ZEMLO_OFFICE_FOLDER"});

struct Pipe {
  platform::Descriptor read;
  platform::Descriptor write;
};

Pipe MakePipe() {
  std::array<int, 2> ends = {};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) {
    throw Failure(
        Failure::Kind::kUnavailable,
        "The layout process could not be started: too many open files. Close other programs and try again.");
  }
  return {platform::Descriptor(ends[0]), platform::Descriptor(ends[1])};
}

std::vector<std::string> EnvironmentFor(const std::filesystem::path& folder) {
  std::vector<std::string> environment = {
      "PATH=/usr/bin:/bin",    "LANG=C.UTF-8", "HOME=" + folder.string(), "TMPDIR=" + folder.string(),
      "SAL_USE_VCLPLUGIN=svp",  // draws without a display
      "SAL_DISABLE_CUPS=1",     // asks no print server
      "SAL_DISABLE_OPENCL=1",
  };
  for (const auto* name : kPassedOn) {
    if (const char* value = std::getenv(name)) environment.push_back(std::string(name) + "=" + value);
  }
  return environment;
}

}  // namespace

LayoutProcess::LayoutProcess(const std::filesystem::path& program, const std::filesystem::path& work_folder,
                             std::uint64_t memory_limit)
    : folder_(work_folder) {
  Start(program, memory_limit);
}

LayoutProcess::~LayoutProcess() {
  End();
}

void LayoutProcess::Start(const std::filesystem::path& program, std::uint64_t memory_limit) {
  auto orders = MakePipe();
  auto reports = MakePipe();
  const platform::ChildProcess office = {
      .command = {program.string(), folder().string(), std::to_string(memory_limit)},
      .input = orders.read.number(),
      .output = reports.write.number(),
      .environment = EnvironmentFor(folder())};
  const int error = office.Start(process_);
  if (error != 0) {
    throw Failure(Failure::Kind::kUnavailable,
                  "The layout program \"" + program.string() +
                      "\" does not start: " + std::generic_category().message(error) +
                      ". Install the correspondence programs again.");
  }
  orders_ = std::move(orders.write);
  reports_ = std::move(reports.read);
  reader_.emplace(reports_.number());
}

std::uint64_t LayoutProcess::ResidentBytes() const {
  std::ifstream statm("/proc/" + std::to_string(process_) + "/statm");
  std::uint64_t all = 0;
  std::uint64_t resident = 0;
  if (!(statm >> all >> resident)) return 0;
  return resident * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
}

std::string LayoutProcess::End() {
  if (process_ < 0) return ending_;
  kill(process_, SIGKILL);
  int status = 0;
  while (waitpid(process_, &status, 0) < 0 && errno == EINTR) {
  }
  process_ = -1;
  ending_ = WIFSIGNALED(status) ? "signal " + std::to_string(WTERMSIG(status))
                                : "exit status " + std::to_string(WEXITSTATUS(status));
  return ending_;
}

}  // namespace wordprocessor
