#pragma once

#include <filesystem>
#include <string_view>

#include "platform/failure.h"

namespace platform {

/// What the operating system's error `number` (errno) means for `file`, as a sentence for the person that
/// says what to do. A full disk is called one.
///
/// `what_failed` follows the file's name: "could not be written". The kind is kNotFound, kPermissionDenied,
/// or kUnavailable where the file system is full or broken.
Failure FileFailure(std::string_view what_failed, const std::filesystem::path& file, int number);

}  // namespace platform
