#pragma once

#include <chrono>
#include <vector>

#include "platform/parties/clock.h"

namespace fakes {

/// A clock that stands until the test, or a wait, moves it.
class ManualClock : public platform::Clock {
 public:
  platform::Timestamp now = std::chrono::local_days(std::chrono::year(2004) / 3 / 15) + std::chrono::hours(9);
  std::vector<std::chrono::milliseconds> waits;

  void SetToday(platform::Date day) { now = std::chrono::local_days(day) + std::chrono::hours(9); }

  platform::Date Today() const override { return platform::Date(std::chrono::floor<std::chrono::days>(now)); }
  platform::Timestamp Now() const override { return now; }
  void Sleep(std::chrono::milliseconds duration) override {
    waits.push_back(duration);
    now += std::chrono::duration_cast<std::chrono::seconds>(duration);
  }
};

}  // namespace fakes
