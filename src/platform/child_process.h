#pragma once

#include <optional>
#include <string>
#include <vector>

namespace platform {

/// What another program is started with: its file with the arguments behind it, and descriptors of the
/// caller's that become its standard input, output and error. Without a descriptor for its errors nobody
/// hears them; without an environment it gets this program's.
struct ChildProcess {
  std::vector<std::string> command;
  int input = -1;
  int output = -1;
  std::optional<int> error = std::nullopt;
  std::optional<std::vector<std::string>> environment = std::nullopt;  ///< "NAME=VALUE" each

  /// Starts it with no signal blocked or ignored, in a process group of its own, so that Ctrl-C in a terminal
  /// reaches this program alone. Sets `process` to its number, which the caller reaps. Returns 0, or the
  /// system's error number; `process` is -1 then.
  int Start(int& process) const;
};

}  // namespace platform
