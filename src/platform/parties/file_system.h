#pragma once

#include <string>

namespace platform {

/// Files as the workspace names them: "\" separates folders too, and the last part of a path is found
/// without regard to case (catalogue and grids write template names in capitals).
class FileSystem {
 public:
  virtual ~FileSystem() = default;

  virtual bool Exists(const std::string& path) const = 0;
  /// Copies, replacing the target in one step: a failed copy leaves what was there.
  /// Throws Failure kNotFound, kPermissionDenied or kUnavailable naming the file.
  virtual void CopyFile(const std::string& from, const std::string& to) = 0;
  /// Returns whether there was one. Throws Failure kPermissionDenied.
  virtual bool DeleteFile(const std::string& path) = 0;
};

}  // namespace platform
