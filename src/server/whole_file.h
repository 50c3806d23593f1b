#pragma once

#include <filesystem>

namespace server {

/// Copies a file so that it appears in its place whole or not at all, replacing what was there: written under
/// another name beside it, brought to the disk, renamed. Throws Failure kUnavailable naming the file.
void CopyWholeFile(const std::filesystem::path& from, const std::filesystem::path& to);

}  // namespace server
