#pragma once

#include <chrono>

#include "platform/value.h"

namespace platform {

/// Today, now and the blocking wait. Tests own one.
class Clock {
 public:
  virtual ~Clock() = default;

  /// The local day.
  virtual Date Today() const = 0;
  virtual Timestamp Now() const = 0;
  /// Blocks the calling thread; no event runs meanwhile.
  virtual void Sleep(std::chrono::milliseconds duration) = 0;
};

}  // namespace platform
