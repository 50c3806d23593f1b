#pragma once

#include <string>
#include <string_view>

#include "server/storage/database.h"

namespace server {

/// Runs a statement about tables with {key}, {bytes} and {by key} in the dialect's words and {time} as
/// kLetterTime.
void ChangeTables(Database& database, std::string_view statement);

/// Brings tables of an older version, with all that is in them, to the form of kSchemaVersion, within the
/// caller's transaction. Returns whether it could: false for a version it does not know. Decision [upgrades].
bool CarryOver(Database& database, const std::string& version);

}  // namespace server
