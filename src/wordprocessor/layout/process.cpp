#include "wordprocessor/layout/process.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <system_error>
#include <utility>
#include <vector>

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

std::vector<char*> Pointers(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (auto& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

/// What a new process starts with: our ends of the pipes, no signal blocked or ignored, and a process group
/// of its own, so that Ctrl-C in a terminal reaches this program alone.
class SpawnSettings {
 public:
  SpawnSettings(int input, int output) {
    posix_spawn_file_actions_init(&actions_);
    posix_spawn_file_actions_adddup2(&actions_, input, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions_, output, STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions_, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawnattr_init(&attributes_);
    sigset_t signals;
    sigemptyset(&signals);
    posix_spawnattr_setsigmask(&attributes_, &signals);
    sigfillset(&signals);
    posix_spawnattr_setsigdefault(&attributes_, &signals);
    posix_spawnattr_setflags(&attributes_,
                             POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
  }
  SpawnSettings(const SpawnSettings&) = delete;
  SpawnSettings& operator=(const SpawnSettings&) = delete;
  ~SpawnSettings() {
    posix_spawn_file_actions_destroy(&actions_);
    posix_spawnattr_destroy(&attributes_);
  }

  posix_spawn_file_actions_t actions_ = {};
  posix_spawnattr_t attributes_ = {};
};

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
  std::vector<std::string> arguments = {program.string(), folder().string(), std::to_string(memory_limit)};
  auto environment = EnvironmentFor(folder());
  const SpawnSettings settings(orders.read.number(), reports.write.number());
  const int error = posix_spawn(&process_, program.c_str(), &settings.actions_, &settings.attributes_,
                                Pointers(arguments).data(), Pointers(environment).data());
  if (error != 0) {
    process_ = -1;
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
