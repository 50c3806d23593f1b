#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace server {

/// Throws Failure where `content`, the file of that name, must not be handed out.
using ContentCheck = std::function<void(const std::string& content, const std::string& file_name)>;

/// Copies a file so that it appears in its place whole or not at all, replacing what was there: read,
/// checked, written under another name beside it, brought to the disk, renamed. Throws Failure naming the
/// file, and what `check` throws.
void CopyWholeFile(const std::filesystem::path& from, const std::filesystem::path& to,
                   const ContentCheck& check = {});

}  // namespace server
