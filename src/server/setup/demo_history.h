#pragma once

#include <filesystem>

#include "platform/value.h"
#include "server/storage/database.h"

namespace server {

/// Fills the empty letter history with `letters` letters of the demo customers over the three years before
/// `today`: of every type that has a template, in every print status, on line and by a nightly batch, each
/// with the data context it was made from. The same for the same customers and `today` every time.
///
/// `product_data` is the product's data folder. Within the caller's transaction, before the history's indexes
/// are made. Throws Failure kNotFound or kDamaged naming a file that is missing or wrong.
void CreateDemoHistory(Database& database, const std::filesystem::path& product_data, int letters,
                       platform::Date today);

}  // namespace server
