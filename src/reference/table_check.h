#pragma once

#include <filesystem>
#include <vector>

#include "platform/tab_table.h"
#include "platform/table_faults.h"

namespace reference {

/// Where an installation has a table of the reference database: "templates.tsv" and the like. It need not be
/// there.
std::filesystem::path TableFile(const std::filesystem::path& product_data_folder, std::string_view file);

/// The tables of an installation, in the order of kTables. What the database could not hold, or the programs
/// would misread, is added to `faults`: a table is good to be taken in only where there is none. Throws
/// Failure kNotFound where a file is missing.
std::vector<platform::TabTable> ReadTables(const std::filesystem::path& product_data_folder,
                                           platform::TableFaults& faults);

}  // namespace reference
