#pragma once

#include <algorithm>
#include <array>
#include <string_view>

/// Letter types, as the table FLS_LETTER has them.
namespace platform {

/// LTR_ONLN_IND: where a letter type is made. The given statements of composition/pick_list_source.cpp name
/// these codes themselves.
namespace made_where {
inline constexpr std::string_view kOnline = "O";
inline constexpr std::string_view kBatch = "B";      ///< by the nightly batch only
inline constexpr std::string_view kSystem = "S";     ///< in no list to choose from
inline constexpr std::string_view kElsewhere = "E";  ///< has no template

inline constexpr auto kAll = std::to_array<std::string_view>({kOnline, kBatch, kSystem, kElsewhere});
inline bool IsKnown(std::string_view code) {
  return std::ranges::find(kAll, code) != kAll.end();
}
}  // namespace made_where

/// The letter types that a batch run is reprinted by.
namespace letter_type {
inline constexpr const char* kTaxLiability = "110";  ///< "CTL"
inline constexpr const char* kTaxWarrant = "109";
}  // namespace letter_type

}  // namespace platform
