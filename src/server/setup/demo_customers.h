#pragma once

#include <filesystem>

#include "platform/value.h"
#include "server/storage/database.h"

namespace server {

/// Fills empty tables with the demo administration: its office, its counties, and `customers` customers with
/// their forms and tax periods. The first customers are those of demo_customers.tsv, each of which shows
/// something; the rest is put together from demo_names.tsv, the same for the same `today` every time.
///
/// `product_data` is the product's data folder. Within the caller's transaction. Throws Failure kNotFound or
/// kDamaged naming a file that is missing or wrong.
void CreateDemoAdministration(Database& database, const std::filesystem::path& product_data, int customers,
                              platform::Date today);

}  // namespace server
