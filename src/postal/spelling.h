#pragma once

#include <string_view>

namespace postal {

/// How many letters have to be put in, left out, replaced, or exchanged with their neighbour to make one word
/// of the other; `limit` + 1 where it takes more than `limit`. Counts bytes: addresses are standardised to
/// letters without accents.
int SpellingDistance(std::string_view left, std::string_view right, int limit);

}  // namespace postal
