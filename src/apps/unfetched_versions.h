#pragma once

#include <string>
#include <vector>

#include "platform/parties/reference_database.h"

namespace apps {

/// A sentence for each version of a letter type that is in force, or will be, and that no start fetches: of
/// the versions without an end only the newest one is fetched, and one of those that have not ended yet. A
/// machine that is set up meanwhile would lack it. `region` is in capitals. Throws Failure where the
/// catalogue cannot be read.
std::vector<std::string> VersionsNobodyFetches(platform::ReferenceDatabase& reference,
                                               const std::string& region);

}  // namespace apps
