#include "platform/child_process.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <unistd.h>

namespace platform {
namespace {

/// What posix_spawn takes, as long as it needs it.
class SpawnSettings {
 public:
  explicit SpawnSettings(const ChildProcess& child) {
    posix_spawn_file_actions_init(&actions_);
    posix_spawn_file_actions_adddup2(&actions_, child.input, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions_, child.output, STDOUT_FILENO);
    if (child.error)
      posix_spawn_file_actions_adddup2(&actions_, *child.error, STDERR_FILENO);
    else
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

std::vector<char*> Pointers(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (auto& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

}  // namespace

int ChildProcess::Start(int& process) const {
  auto arguments = command;
  auto surroundings = environment.value_or(std::vector<std::string>());
  auto names = Pointers(surroundings);
  const SpawnSettings settings(*this);
  const int error_number =
      posix_spawn(&process, command.front().c_str(), &settings.actions_, &settings.attributes_,
                  Pointers(arguments).data(), environment ? names.data() : environ);
  if (error_number != 0) process = -1;
  return error_number;
}

}  // namespace platform
