#pragma once

#include <cstdint>
#include <limits>

namespace platform {

/// A 16-bit count that stops at its largest value instead of wrapping.
class Counter {
 public:
  Counter() = default;
  Counter(std::int16_t value) : value_(value) {}  // NOLINT: counters are set from plain numbers

  std::int16_t value() const { return value_; }
  /// Adds one. Returns false, and leaves the count, when it is at its largest value: the caller reports that.
  [[nodiscard]] bool Increment() {
    if (value_ == std::numeric_limits<std::int16_t>::max()) return false;
    ++value_;
    return true;
  }
  auto operator<=>(const Counter&) const = default;

 private:
  std::int16_t value_ = 0;
};

}  // namespace platform
