#pragma once

#include <chrono>
#include <filesystem>
#include <stop_token>
#include <string>
#include <string_view>

namespace postal {

/// A program that answers lines with lines, in a process group of its own. One thread.
class ProgramProcess {
 public:
  using Time = std::chrono::steady_clock::time_point;

  /// The longest line that is read; who writes more answers nothing.
  static constexpr std::size_t kLongestLine = std::size_t{64} * 1024;

  /// Throws Failure kUnavailable where it does not start.
  explicit ProgramProcess(const std::filesystem::path& program);
  ProgramProcess(const ProgramProcess&) = delete;
  ProgramProcess& operator=(const ProgramProcess&) = delete;
  /// Closes its input, gives it a moment to end, and kills what is left of its process group.
  ~ProgramProcess();

  /// Whether it has written something, or ended, though nothing was asked.
  bool HasSpokenUnasked();

  /// Writes `line` and a line feed, and returns the line it answers, without its end. Throws Failure
  /// kTimedOut at `deadline`, kUnavailable where the program has closed its input or output or writes too
  /// much, with the last words of its standard error, and when `ending` is stopped.
  std::string Ask(std::string_view line, Time deadline, const std::stop_token& ending);

 private:
  /// Waits until something can be read or, where `is_writing`, written, and reads it.
  void Await(bool is_writing, Time deadline, const std::stop_token& ending);
  [[noreturn]] void Fail(const std::string& what) const;
  void ReadErrors();
  void ReadAnswers();
  std::string LastWords() const;

  const std::string name_;
  int process_ = -1;  // a process number
  int questions_ = -1;
  int answers_ = -1;
  int errors_ = -1;
  bool is_closed_ = false;  // its output
  std::string arrived_;
  std::string said_;  // on its standard error, the end of it
};

}  // namespace postal
