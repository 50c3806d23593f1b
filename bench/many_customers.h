#pragma once

#include <filesystem>

namespace bench {

/// Makes the server's data in the folder, with as many more customers, drawn from the demo data's names, the
/// same every time; they have no forms. The ids count from 1000001. Says on standard error what making their
/// index cost.
void MakeManyCustomers(const std::filesystem::path& folder, int customers);

}  // namespace bench
