#include "host/error_log.h"

#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

#include "platform/file_access.h"
#include "platform/file_failure.h"
#include "platform/text.h"
#include "platform/value.h"

namespace host {

void ErrorLog::ReportError(std::string_view description, std::string_view component_title,
                           std::string_view procedure) noexcept {
  try {
    auto one_line = platform::ReplaceAll(description, "\r", "\\r");
    one_line = platform::ReplaceAll(one_line, "\n", "\\n");
    const auto line = platform::TimestampText(clock_.Now()) + '\t' + std::string(component_title) + '\t' +
                      std::string(procedure) + '\t' + one_line + '\n';
    const int failure = IsTheSameFault(description) ? 0 : Append(line);
    if (listener_) listener_(std::string(description), std::string(procedure));
    if (failure != 0) TellNotWritten(failure);
  } catch (const std::exception&) {
    // A log that cannot be written must not stop the work it reports on.
  }
}

bool ErrorLog::IsTheSameFault(std::string_view description) {
  constexpr std::chrono::seconds kOneFault(2);
  const std::lock_guard lock(mutex_);
  const auto now = clock_.Now();
  const bool is_same =
      description == last_description_ && last_written_ <= now && now - last_written_ < kOneFault;
  if (is_same) return true;
  last_description_ = description;
  last_written_ = now;
  return false;
}

int ErrorLog::Append(const std::string& line) {
  const std::lock_guard lock(mutex_);
  int log = open(file_.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC);
  if (log < 0 && errno == ENOENT) {
    if (const int made = platform::OpenNewFile(file_); made >= 0) close(made);
    log = open(file_.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC);  // also where another program has made it
  }
  // One write: two programs may share the file.
  const bool is_written =
      log >= 0 && write(log, line.data(), line.size()) == static_cast<ssize_t>(line.size());
  const int number = errno;
  if (log >= 0) close(log);
  if (is_written) return 0;
  return number == 0 ? ENOSPC : number;
}

void ErrorLog::TellNotWritten(int number) {
  if (told_not_written_.exchange(true) || !listener_) return;
  listener_(platform::FileFailure("(the error log) could not be written", file_, number).description(),
            "ErrorLog.ReportError");
}

std::string ErrorLog::ErrorText(std::uint32_t number) const {
  constexpr std::uint32_t kCodeNotInList = 0x800403E9;
  if (number == kCodeNotInList) return "The code is not in the list.";
  return "Application error " + std::to_string(number) + ".";
}

}  // namespace host
