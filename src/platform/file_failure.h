#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "platform/failure.h"

namespace platform {

/// What the operating system's error `number` (errno) means for `file`, as a sentence for the person that
/// says what to do. A full disk is called one.
///
/// `what_failed` follows the file's name: "could not be written". The kind is kNotFound, kPermissionDenied,
/// or kUnavailable where the file system is full or broken.
Failure FileFailure(std::string_view what_failed, const std::filesystem::path& file, int number);

/// The same for a folder.
Failure FolderFailure(std::string_view what_failed, const std::filesystem::path& folder, int number);

/// The error alone, for a message about something that has no name: "the disk is full (No space left on
/// device)".
std::string FileErrorText(int number);

}  // namespace platform
