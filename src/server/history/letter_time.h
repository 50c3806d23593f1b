#pragma once

#include <string_view>

namespace server {

/// The time by which a letter is found and listed: when it was first printed, and for a letter that was never
/// printed when it was processed. Written out in each statement, because indexes are kept of this expression.
/// Decision [letter-time].
inline constexpr std::string_view kLetterTime = "COALESCE(PRNT_TS, LST_PRCS_TS)";

}  // namespace server
