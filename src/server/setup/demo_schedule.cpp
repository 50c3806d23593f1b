#include "server/setup/demo_schedule.h"

#include <algorithm>
#include <cstdint>

namespace server {
namespace {

using std::chrono::days;
using std::chrono::hours;
using std::chrono::local_days;
using std::chrono::seconds;

constexpr auto kBatchStart = hours(1);
constexpr auto kBatchLength = seconds(hours(3));
constexpr auto kOfficeOpens = hours(8);
constexpr auto kOfficeHours = seconds(hours(9));
// Of ten letters of a working day, so many come from its night.
constexpr int kBatchTenths = 4;
// The last letter of each of these nights still waits for its print.
constexpr int kNightsWithMerged = 3;

local_days ThreeYearsBefore(platform::Date today) {
  // The 29th of February has no day of its own three years earlier.
  const auto first = today - std::chrono::years(3);
  return first.ok() ? local_days(first) + days(1) : local_days(first.year() / std::chrono::March / 1);
}

bool IsWorkingDay(local_days day) {
  const std::chrono::weekday weekday(day);
  return weekday != std::chrono::Saturday && weekday != std::chrono::Sunday;
}

/// The `place`-th of `count` times, evenly over the length.
seconds Spread(seconds length, int place, int count) {
  return seconds(length.count() * place / std::max(count, 1));
}

}  // namespace

DemoSchedule::DemoSchedule(int letters, platform::Date today)
    : letters_(letters),
      first_day_(ThreeYearsBefore(today)),
      days_(static_cast<int>((local_days(today) - first_day_).count()) + 1) {}

int DemoSchedule::FirstOf(int day) const {
  const auto product = static_cast<std::int64_t>(day) * letters_;
  return static_cast<int>((product + days_ - 1) / days_);
}

platform::Timestamp DemoSchedule::NightBegins(int night) const {
  return first_day_ + days(night - 1) + kBatchStart;
}

DemoSlot DemoSchedule::At(int letter) const {
  const auto day = static_cast<int>(static_cast<std::int64_t>(letter) * days_ / letters_);
  const auto date = first_day_ + days(day);
  const bool last_night = day == days_ - 1;
  const int count = FirstOf(day + 1) - FirstOf(day);
  const int place = letter - FirstOf(day);
  const int of_batch = last_night || !IsWorkingDay(date) ? count : count * kBatchTenths / 10;
  if (place >= of_batch) {
    return {.time = date + kOfficeOpens + Spread(kOfficeHours, place - of_batch, count - of_batch)};
  }
  const bool waiting = last_night && (place + 1) * 3 > count * 2;
  return {.time = date + kBatchStart + Spread(kBatchLength, place, of_batch),
          .night = day + (waiting ? 2 : 1),
          .last_night = last_night,
          .merged = !waiting && day >= days_ - kNightsWithMerged && place + 1 == of_batch,
          .waiting = waiting};
}

}  // namespace server
