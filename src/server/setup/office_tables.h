#pragma once

#include <filesystem>

#include "server/storage/database.h"

namespace server {

/// Takes in what the server needs of an office's tables: the states an address may lie in and the print
/// statuses that actions on letters are allowed for, anew each time, and the beginnings of the counties' zip
/// codes where none are stored. Addresses of this state without a county then get the one that their zip code
/// says. Throws Failure kNotFound or kDamaged naming the table.
void TakeInOfficeTables(Database& database, const std::filesystem::path& product_data_folder);

}  // namespace server
