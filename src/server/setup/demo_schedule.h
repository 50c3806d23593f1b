#pragma once

#include "platform/value.h"

namespace server {

/// When a demo letter came about, and in which night.
struct DemoSlot {
  platform::Timestamp time;
  int night = 0;  ///< which nightly batch run, counted from 1; 0 for a letter made on line
  bool last_night = false;
  bool merged = false;   ///< of one of the last nights, and not printed yet
  bool waiting = false;  ///< left over by the last run, for tonight's
};

/// Spreads demo letters over the three years that end with last night's batch: on line in the office hours of
/// working days, by the batch every night. Later letters have later times.
class DemoSchedule {
 public:
  DemoSchedule(int letters, platform::Date today);

  /// `letter` counts from 0.
  DemoSlot At(int letter) const;
  /// When that night's run begins; nights count from 1.
  platform::Timestamp NightBegins(int night) const;
  /// How many nights there are.
  int Nights() const { return days_; }

 private:
  /// The first letter of that day.
  int FirstOf(int day) const;

  const int letters_;
  const std::chrono::local_days first_day_;
  const int days_;
};

}  // namespace server
