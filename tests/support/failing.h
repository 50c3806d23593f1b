#pragma once

#include <gmock/gmock.h>

#include <string>

#include "platform/failure.h"

namespace tests {

/// Of work as a function: it ends with a Failure whose description matches.
template <typename Description>
auto FailsSaying(Description description) {
  return testing::Throws<platform::Failure>(
      testing::Property("description", &platform::Failure::description, description));
}

/// The same, with the Failure's kind.
template <typename Description>
auto Fails(platform::Failure::Kind kind, Description description) {
  return testing::Throws<platform::Failure>(
      testing::AllOf(testing::Property("kind", &platform::Failure::kind, kind),
                     testing::Property("description", &platform::Failure::description, description)));
}

/// The description of the Failure that `work` ends with; "" where it does not fail.
template <typename Work>
std::string WhyNot(Work work) {
  try {
    work();
  } catch (const platform::Failure& failure) {
    return failure.description();
  }
  return "";
}

}  // namespace tests
