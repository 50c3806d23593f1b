#pragma once

#include <cstdint>
#include <filesystem>

#include "platform/failure.h"

namespace server {

/// Throws Failure where there is nothing to be read in the file of the server's data: kNotFound,
/// kPermissionDenied, or kDamaged for one that is empty.
void RequireReadable(const std::filesystem::path& file);

/// Whether this program may write to the file and make others beside it, as an engine does to change it.
bool MayChange(const std::filesystem::path& file);

/// What is said to a user who may read the file and wants to change it: whose it is, or that the disk is
/// mounted read only.
platform::Failure NoRightToChange(const std::filesystem::path& file);

platform::Failure DamagedData(const std::filesystem::path& file);

/// What tells that a file has been written to.
struct FileStamp {
  std::filesystem::file_time_type time;
  std::uintmax_t size = 0;

  bool operator==(const FileStamp&) const = default;
};

/// Of no time for a file that is missing.
FileStamp StampOf(const std::filesystem::path& file) noexcept;

}  // namespace server
