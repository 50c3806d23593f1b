#pragma once

#include <filesystem>

#include "platform/tab_table.h"
#include "platform/table_faults.h"
#include "platform/value.h"
#include "server/storage/database.h"

namespace server {

/// Every field of every letter, as an installation brings them (`product_data_folder`
/// "/server/letter_fields.tsv"). Added to `faults` is what keeps them from being taken in: unknown kinds,
/// sources, rules and letter types, columns without their table, functions of fields that do not stand above
/// them, names that no element can have or that come twice, letters without fields. Throws Failure kNotFound.
platform::TabTable ReadLetterDefinitions(const std::filesystem::path& product_data_folder,
                                         platform::TableFaults& faults);

/// Runs the query of each field once, about nobody, and adds those that fail to `faults`.
void TryQueries(Database& database, const platform::TabTable& definitions, platform::Date today,
                platform::TableFaults& faults);

/// Replaces all letter definitions, within the caller's transaction.
void StoreLetterFields(Database& database, const platform::TabTable& definitions);

}  // namespace server
