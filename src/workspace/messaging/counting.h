#pragma once

#include <string>
#include <string_view>

#include "platform/counter.h"
#include "platform/parties/services.h"

namespace workspace {

/// Adds one. A count that is full stays where it is, and the failure is reported under the procedure.
inline void CountUp(const platform::Services& services, platform::Counter& counter, std::string_view what,
                    std::string_view procedure) {
  if (counter.Increment()) return;
  services.errors.ReportError("The number of " + std::string(what) + " stays at \"" +
                                  std::to_string(counter.value()) + "\", the most that can be counted.",
                              platform::kComponentTitle, procedure);
}

}  // namespace workspace
