#pragma once

#include <string_view>

namespace workspace {

/// The print status of a letter whose address did not pass verification.
inline constexpr std::string_view kAddressFailed = "V";

}  // namespace workspace
