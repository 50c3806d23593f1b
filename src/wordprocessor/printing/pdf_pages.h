#pragma once

#include <cstddef>
#include <filesystem>

namespace wordprocessor {

/// How many pages a PDF file has. Throws Failure kDamaged, naming the file, for one that cannot be read.
std::size_t CountPdfPages(const std::filesystem::path& pdf);

}  // namespace wordprocessor
