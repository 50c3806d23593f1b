#pragma once

#include <optional>
#include <string>
#include <utility>

#include "platform/failure.h"

namespace platform {

/// Why a letter was not printed.
struct PrintFault {
  std::string reason;  ///< a whole sentence, or several
  /// Another letter may print all the same: the fault lies in this one's data or template. Not where the
  /// printer, the layout or the server is gone.
  bool is_letters_own = false;
};

/// Runs `work` before the letter is handed to the printer. What fails passes through, and `fault` says it.
template <typename Work>
void KeepFault(std::optional<PrintFault>& fault, Work&& work) {
  try {
    std::forward<Work>(work)();
  } catch (const Failure& failure) {
    fault = {failure.description(), failure.kind() != Failure::Kind::kUnavailable};
    throw;
  }
}

}  // namespace platform
