#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

#include "platform/record_set.h"
#include "server/storage/database.h"

namespace server {

/// The customers whose id, names, cities and account hold every word of `text`, by their ids; all of them for
/// a blank text. At most `limit`, with all columns of a customer. Throws Failure kUnavailable.
///
/// Case, accents, apostrophes and what stands between words do not matter, nor does the words' order: "cafe
/// elan", "Merriweather, Hattie", "62-000100001-01". The longest word has to begin one of the customer's;
/// only where nobody has such a word it may stand inside one: the first goes by an index, the second through
/// all.
std::shared_ptr<platform::RecordSet> FindCustomers(Database& database, std::string_view text,
                                                   std::size_t limit);

}  // namespace server
