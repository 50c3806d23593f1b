#pragma once

#include <string>
#include <vector>

#include "platform/parties/services.h"

/// A letter in which nothing has filled some bookmarks shows the template's placeholders there.
/// Decision [unfilled-letter].
namespace composition {

/// Asks whether a letter that the user sees goes out with these placeholders; No is the default.
bool AskToLetOut(const platform::Services& services, const std::vector<std::string>& names);

/// For a letter that nobody has looked at: throws Failure kRefused naming the bookmarks.
[[noreturn]] void RefuseToLetOut(const std::vector<std::string>& names);

}  // namespace composition
