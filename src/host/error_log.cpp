#include "host/error_log.h"

#include <fstream>

#include "platform/text.h"
#include "platform/value.h"

namespace host {

void ErrorLog::ReportError(std::string_view description, std::string_view component_title,
                           std::string_view procedure) noexcept {
  try {
    auto one_line = platform::ReplaceAll(description, "\r", "\\r");
    one_line = platform::ReplaceAll(one_line, "\n", "\\n");
    Append(platform::TimestampText(clock_.Now()) + '\t' + std::string(component_title) + '\t' +
           std::string(procedure) + '\t' + one_line);
    if (listener_) listener_(std::string(description), std::string(procedure));
  } catch (const std::exception&) {
    // A log that cannot be written must not stop the work it reports on.
  }
}

void ErrorLog::Append(const std::string& line) {
  const std::lock_guard lock(mutex_);
  std::ofstream log(file_, std::ios::app | std::ios::binary);
  log << line + '\n' << std::flush;  // one write: two programs may share the file
}

std::string ErrorLog::ErrorText(std::uint32_t number) const {
  constexpr std::uint32_t kCodeNotInList = 0x800403E9;
  if (number == kCodeNotInList) return "The code is not in the list.";
  return "Application error " + std::to_string(number) + ".";
}

}  // namespace host
