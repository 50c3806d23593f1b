#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "wordprocessor/files/zip_directory.h"

namespace wordprocessor {

/// Unpacks an entry piece by piece and holds it to its size and checksum, which are wrong in no more bytes
/// than `take` was given. Throws the Failure of FailAtZipEntry.
void UnpackZipEntry(const ZipEntry& entry, const std::string& file_name,
                    const std::function<void(std::string_view)>& take);

/// Writes a zip file: entries one after the other, then the directory.
class ZipWriter {
 public:
  /// As it stands in another file, still packed.
  void Copy(const ZipEntry& entry);
  /// Packs `content`. `name` and `time` as in ZipEntry.
  void Add(std::string_view name, std::string_view content, std::uint32_t time);
  /// The file. Once, at the end. Throws Failure kRefused where it grew beyond what a document may be.
  std::string Finish();

 private:
  void Write(const ZipEntry& entry);

  std::string bytes_;
  std::string directory_;
  std::uint16_t count_ = 0;
};

}  // namespace wordprocessor
