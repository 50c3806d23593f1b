#pragma once

#include <chrono>
#include <functional>
#include <vector>

#include "platform/parties/clock.h"

namespace fakes {

/// A clock that stands until the test, or a wait, moves it.
class ManualClock : public platform::Clock {
 public:
  platform::Timestamp now = std::chrono::local_days(std::chrono::year(2004) / 3 / 15) + std::chrono::hours(9);
  std::vector<std::chrono::milliseconds> waits;
  std::function<void(std::chrono::milliseconds)> asleep;  ///< told of each wait, where it is set

  void SetToday(platform::Date day) { now = std::chrono::local_days(day) + std::chrono::hours(9); }

  platform::Date Today() const override { return platform::Date(std::chrono::floor<std::chrono::days>(now)); }
  platform::Timestamp Now() const override { return now; }
  void Sleep(std::chrono::milliseconds duration) override {
    waits.push_back(duration);
    if (asleep) asleep(duration);
    now += std::chrono::duration_cast<std::chrono::seconds>(duration);
  }
};

}  // namespace fakes
