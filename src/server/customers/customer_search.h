#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "server/storage/database.h"

namespace server {

/// The ids of the customers of whom every word of `text` begins a word: of a name, a city or a zip, or a
/// number (customer, account, telephone, driver licence, registration). Without the first `skipped`, at most
/// `limit`. Throws Failure kUnavailable.
///
/// Case, accents, apostrophes and what stands between words do not matter, nor does the words' order: "cafe
/// elan", "Merriweather, Hattie", "62-000100001-01", "merr oakhaven". First come those who have one of the
/// words as a whole number, then those with a name that begins with the first word, each by name: a business
/// by its own, a person by last and first name. A blank text lists all customers by their ids.
std::vector<std::string> FindCustomers(Database& database, std::string_view text, std::int64_t skipped,
                                       std::int64_t limit);

/// How many FindCustomers finds; no more than `most` are counted.
std::int64_t CountCustomers(Database& database, std::string_view text, std::int64_t most);

}  // namespace server
