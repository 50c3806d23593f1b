#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

#include "platform/record_set.h"
#include "server/database.h"

namespace server {

/// The customers whose id, name, city or account holds `text`, without regard to case, by their ids; all of
/// them for "". At most `limit`, with all columns of a customer. Throws Failure kUnavailable.
std::shared_ptr<platform::RecordSet> FindCustomers(Database& database, std::string_view text,
                                                   std::size_t limit);

}  // namespace server
