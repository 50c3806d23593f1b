#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string_view>

#include "platform/failure.h"

/// What libFuzzer calls with each input.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

inline std::string_view TextOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};  // NOLINT: libFuzzer gives bytes
}

/// Runs `work`, for which a Failure that names what is wrong is as good an end as any.
template <typename Work>
void Answered(Work&& work) {
  try {
    work();
  } catch (const platform::Failure& failure) {
    if (failure.description().empty()) std::abort();
  }
}

/// Ends the program where what must hold does not.
inline void Require(bool holds, const char* what) {
  if (holds) return;
  std::cerr << "does not hold: " << what << '\n';
  std::abort();
}

}  // namespace fuzz
