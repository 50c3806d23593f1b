#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "server/storage/database.h"

namespace server {

/// The version of the tables that this program reads and writes.
inline constexpr std::int64_t kSchemaVersion = 11;

/// The entry of server_info with the text of the letter definitions as they were read last.
inline constexpr const char* kDefinitions = "letter definitions";

/// Makes the tables in an empty database, and writes down their version.
void CreateTables(Database& database);
/// Makes the indexes of the letter history: after the tables, and after many letters came at once.
void CreateHistoryIndexes(Database& database);

/// Whether the tables are those of this program's version. Throws Failure kDamaged where there is no version
/// at all.
bool HasCurrentTables(Database& database);

/// Throws Failure kRefused where the data were made by a program with other tables, kDamaged where there is
/// no version at all. Data of an older program that can be carried over are; everything or nothing. Customers
/// that were put in by other means become findable. `tell` gets a sentence before what takes minutes.
void PrepareSchema(Database& database, const std::function<void(const std::string&)>& tell = {});

}  // namespace server
