#pragma once

#include <filesystem>
#include <string>

namespace host {

/// The account that owns the file, by its name, or its number where it has no name; "" for the account this
/// program runs as, and where there is no such file.
std::string OtherOwnerOf(const std::filesystem::path& file);

/// Shares the folder and what is in it with the group: its members may read and write everything there, and
/// nobody else but the owners. What is made there later is shared as well (platform/file_access.h).
///
/// Throws Failure kNotFound for a group that is not there, kPermissionDenied naming what belongs to somebody
/// else.
void ShareWithGroup(const std::filesystem::path& folder, const std::string& group);

}  // namespace host
