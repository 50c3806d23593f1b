#pragma once

#include <exception>
#include <string_view>
#include <utility>

#include "platform/failure.h"
#include "platform/identity.h"
#include "platform/parties/error_reporter.h"

namespace platform {

/// Ends every failure of a procedure: what escapes `work` is reported under `procedure`, the two internal
/// signals are swallowed, and the caller goes on with the procedure's normal end.
/// Returns whether `work` ran to its end.
template <typename Work>
bool Trap(ErrorReporter& errors, std::string_view procedure, Work&& work) noexcept {
  try {
    std::forward<Work>(work)();
    return true;
  } catch (const AbandonStep&) {
  } catch (const CancelSave&) {
  } catch (const std::exception& failure) {
    errors.ReportError(failure.what(), kComponentTitle, procedure);
  }
  return false;
}

}  // namespace platform
