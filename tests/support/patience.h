#pragma once

#include <chrono>

namespace tests {

/// How long a test waits for what has to come, whatever else the machine is doing. A wait ends when the thing
/// is there; only what never comes takes this long.
inline constexpr std::chrono::seconds kPatience(60);

/// Calls `turn`, which lets a little time pass, until `done` holds; false where it never does.
template <typename Done, typename Turn>
bool ComesTrue(Done done, Turn turn) {
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while (!done()) {
    if (std::chrono::steady_clock::now() > end) return done();
    turn();
  }
  return true;
}

}  // namespace tests
