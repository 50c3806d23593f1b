#pragma once

#include <filesystem>

#include "platform/descriptor.h"

namespace wordprocessor {

/// A folder of its own, readable to this user alone; removed with the object, with all it holds. What a
/// program that was killed left behind, the next one removes.
class LayoutFolder {
 public:
  /// Makes the folder inside `work_folder`, which is made where it is missing.
  /// Throws Failure kPermissionDenied or kUnavailable.
  explicit LayoutFolder(const std::filesystem::path& work_folder);
  LayoutFolder(const LayoutFolder&) = delete;
  LayoutFolder& operator=(const LayoutFolder&) = delete;
  ~LayoutFolder();

  const std::filesystem::path& path() const { return path_; }

  /// Removes the folders in `work_folder` whose programs are gone. Never throws.
  static void RemoveLeftovers(const std::filesystem::path& work_folder) noexcept;

 private:
  bool Take(const std::filesystem::path& work_folder);

  std::filesystem::path path_;
  platform::Descriptor lock_;  ///< held as long as the folder is in use
};

}  // namespace wordprocessor
