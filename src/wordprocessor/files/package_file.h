#pragma once

#include <compare>
#include <cstdint>
#include <filesystem>
#include <string>

namespace wordprocessor {

/// Which file a path meant when it was looked at, and in which state. The same identity means the same bytes.
struct FileIdentity {
  std::uint64_t device = 0;
  std::uint64_t inode = 0;
  std::uint64_t size = 0;
  std::int64_t modified_ns = 0;

  bool operator==(const FileIdentity&) const = default;

  /// Throws Failure kNotFound, kPermissionDenied or kRefused (no ordinary file) naming the file.
  static FileIdentity Of(const std::filesystem::path& file);
};

struct FileContent {
  std::string bytes;
  FileIdentity identity;  ///< of the very file that was read
};

/// Throws Failure kNotFound, kPermissionDenied, kRefused (no ordinary file, larger than a package may be) or
/// kUnavailable; the text names the file and says what to do.
FileContent ReadFile(const std::filesystem::path& file);

}  // namespace wordprocessor
