#pragma once

#include <cstdint>

#include "server/database.h"

namespace server {

/// The version of the tables that this program reads and writes.
inline constexpr std::int64_t kSchemaVersion = 2;

/// Makes the tables in an empty database, and writes down their version.
void CreateSchema(Database& database);

/// Throws Failure kRefused where the data were made by a program with other tables, kDamaged where there is
/// no version at all.
void CheckSchema(Database& database);

}  // namespace server
