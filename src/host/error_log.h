#pragma once

#include <atomic>
#include <filesystem>
#include <functional>
#include <mutex>
#include <string>

#include "platform/parties/clock.h"
#include "platform/parties/error_reporter.h"

namespace host {

/// Reports go into a log file, one line each (time, component, procedure, description), and to a listener
/// that tells the person; it is told once that the log cannot be written, too. May be called from any thread;
/// the listener is called on the reporting one.
///
/// One fault is met by many procedures: of reports with the same description that follow one another within
/// two seconds only the first is written. The listener hears each.
class ErrorLog : public platform::ErrorReporter {
 public:
  using Listener = std::function<void(const std::string& description, const std::string& procedure)>;

  ErrorLog(std::filesystem::path file, const platform::Clock& clock, Listener listener)
      : file_(std::move(file)), clock_(clock), listener_(std::move(listener)) {}

  void ReportError(std::string_view description, std::string_view component_title,
                   std::string_view procedure) noexcept override;
  std::string ErrorText(std::uint32_t number) const override;

 private:
  /// Returns the errno of what failed; 0 where the line was written.
  int Append(const std::string& line);
  void TellNotWritten(int number);
  bool IsTheSameFault(std::string_view description);

  // Constant after construction.
  const std::filesystem::path file_;
  const platform::Clock& clock_;
  const Listener listener_;

  std::mutex mutex_;                    // one line at a time
  std::string last_description_;        // guarded by mutex_
  platform::Timestamp last_written_{};  // guarded by mutex_; of last_description_
  std::atomic<bool> told_not_written_ = false;
};

}  // namespace host
