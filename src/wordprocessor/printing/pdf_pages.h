#pragma once

#include <cstddef>
#include <filesystem>
#include <vector>

namespace wordprocessor {

/// How many pages a PDF file has. Throws Failure kDamaged, naming the file, for one that cannot be read.
std::size_t CountPdfPages(const std::filesystem::path& pdf);

/// Writes all pages of the files into one, in their order; it appears whole or not at all. Throws Failure
/// kDamaged naming a file that cannot be read, and those of platform/whole_file.h where the new one cannot be
/// written.
void JoinPdfs(const std::vector<std::filesystem::path>& files, const std::filesystem::path& joined);

}  // namespace wordprocessor
