#pragma once

#include "platform/parties/clock.h"

namespace host {

/// The machine's clock in the machine's time zone.
class SystemClock : public platform::Clock {
 public:
  platform::Date Today() const override;
  platform::Timestamp Now() const override;
  void Sleep(std::chrono::milliseconds duration) override;
};

}  // namespace host
