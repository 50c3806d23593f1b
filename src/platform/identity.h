#pragma once

#include <string_view>

/// What this component calls itself, fixed for the whole build.
namespace platform {

/// Put into every request's `Application` and compared with every `DataReady`.
inline constexpr std::string_view kApplicationName = "ZEMLO_Corresp";

/// Passed to every ReportError.
inline constexpr std::string_view kComponentTitle = "Correspondence";

/// Major version, ".", minor version: put into every request's `Version`.
inline constexpr std::string_view kVersion = "1.0";

}  // namespace platform
