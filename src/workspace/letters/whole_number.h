#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "platform/failure.h"
#include "platform/value.h"

namespace workspace {

/// The whole number that a text holds. Throws Failure kRefused, naming `what`, where it does not fit; what
/// Value::AsInteger throws where it is none.
template <typename Number>
Number WholeNumber(std::string_view what, const std::string& text) {
  const auto number = platform::Value(text).AsInteger();
  if (std::in_range<Number>(number)) return static_cast<Number>(number);
  throw platform::Failure(platform::Failure::Kind::kRefused,
                          "The " + std::string(what) + " \"" + text + "\" is out of range.");
}

}  // namespace workspace
