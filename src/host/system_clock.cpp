#include "host/system_clock.h"

#include <ctime>
#include <thread>

namespace host {

platform::Timestamp SystemClock::Now() const {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  using namespace std::chrono;
  const auto day = local_days{year{local.tm_year + 1900} / month(static_cast<unsigned>(local.tm_mon + 1)) /
                              std::chrono::day(static_cast<unsigned>(local.tm_mday))};
  return day + hours{local.tm_hour} + minutes{local.tm_min} + seconds{local.tm_sec};
}

platform::Date SystemClock::Today() const {
  return platform::Date{std::chrono::floor<std::chrono::days>(Now())};
}

void SystemClock::Sleep(std::chrono::milliseconds duration) {
  std::this_thread::sleep_for(duration);
}

}  // namespace host
