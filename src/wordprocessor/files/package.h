#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "wordprocessor/files/zip_directory.h"

namespace wordprocessor {

/// What a package may be at most; counted while it is inflated, whatever its directory says.
struct PackageLimits {
  std::uint64_t entries = 2'000;
  std::uint64_t total_size = 256ull << 20;
  /// How many times its packed size an entry may have, and from which size on that is asked.
  std::uint64_t ratio = 200;
  std::uint64_t ratio_from = 1ull << 20;
};

inline constexpr PackageLimits kPackageLimits;

/// A part to write: a new one, or the new content of one that is there.
struct PackagePart {
  std::string_view name;
  std::string_view content;
};

/// The zip package of a document (ECMA-376, part 2), held in memory as it stands in the file.
///
/// Immutable: letters share it across threads.
class DocxPackage {
 public:
  /// Checks the whole package: directory, limits, names, checksums. `file_name` is what messages call it.
  /// Throws Failure kDamaged (no zip file, damaged, not a document of this kind) or kRefused (protected, over
  /// a limit, unsafe names); the text names the file and says what to do.
  static DocxPackage FromBytes(std::string bytes, const std::string& file_name,
                               const PackageLimits& limits = kPackageLimits);

  const std::string& file_name() const { return file_name_; }
  const std::string& bytes() const { return *bytes_; }

  /// Part names stand in the package without a leading "/" and are found without regard to case (part 2,
  /// 6.2.2.3).
  bool Has(std::string_view name) const;
  /// Throws Failure kDamaged where there is no such part.
  std::string Read(std::string_view name) const;

  /// The package with these parts in it; of two of one name the last counts. All others are copied as they
  /// are, still packed. Headers and directory are written anew, so that whoever reads it next finds what was
  /// checked here, whatever the file held besides.
  /// `keep` is asked for every part's name as it stands in the package; false leaves it out.
  std::string With(const std::vector<PackagePart>& parts,
                   const std::function<bool(std::string_view name)>& keep = {}) const;

  /// A Failure about this file: `"name" text`.
  [[noreturn]] void Damaged(const std::string& text) const;

 private:
  DocxPackage(std::string bytes, std::string file_name);
  void Check(const PackageLimits& limits);

  std::string file_name_;
  std::shared_ptr<const std::string> bytes_;
  std::vector<ZipEntry> entries_;                         // into bytes_
  std::unordered_map<std::string, std::size_t> by_name_;  // in lower case
};

}  // namespace wordprocessor
