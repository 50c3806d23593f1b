#pragma once

#include <filesystem>

namespace apps {

/// What the product comes with (reference data, letter templates, server data): beside the installed program
/// in ../share/zemlo-correspondence, else in the source folder it was built from.
/// Throws Failure kNotFound where there is neither.
std::filesystem::path ProductDataFolder();

}  // namespace apps
