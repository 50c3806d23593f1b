#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

/// Where failures end: a log a person can read afterwards, and, in a window, a notice.
class ErrorReporter {
 public:
  virtual ~ErrorReporter() = default;

  /// Never throws. `procedure` is the object's name, ".", the procedure's name.
  virtual void ReportError(std::string_view description, std::string_view component_title,
                           std::string_view procedure) noexcept = 0;

  /// The message text of an application error number (0x800403E9: a code that is not in its list).
  virtual std::string ErrorText(std::uint32_t number) const = 0;
};

}  // namespace platform
