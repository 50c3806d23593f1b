#pragma once

#include <filesystem>

#include "platform/table_faults.h"

namespace reference {

/// Reads the tables of an installation (`product_data_folder` "/reference/*.tsv") and adds to `faults` what
/// keeps them from being taken in. Throws Failure kNotFound where one is missing.
void CheckReferenceTables(const std::filesystem::path& product_data_folder, platform::TableFaults& faults);

/// The reference database as the tables of an installation say, built beside the one that is in use. Until it
/// is put in place nothing has changed, and without that it goes with this object.
class NextReferenceDatabase {
 public:
  /// Where `target` was made by this version from the same files, which is the usual start, nothing is read
  /// but their sizes and times.
  ///
  /// Throws Failure kNotFound or kDamaged naming file, line and column of what is wrong, kPermissionDenied or
  /// kUnavailable where the target's folder cannot be written to.
  NextReferenceDatabase(const std::filesystem::path& product_data_folder, std::filesystem::path target);
  NextReferenceDatabase(const NextReferenceDatabase&) = delete;
  NextReferenceDatabase& operator=(const NextReferenceDatabase&) = delete;
  ~NextReferenceDatabase();

  /// Whether the tables have changed.
  bool is_needed() const { return is_needed_; }
  /// A program that reads the former database keeps reading it. Throws Failure kPermissionDenied.
  void PutInPlace();

 private:
  const std::filesystem::path target_;
  std::filesystem::path file_;  // beside it
  bool is_needed_ = false;
};

/// Brings the reference database up to date at once; returns whether it had to be written.
/// Decision [reference-build].
bool CreateReferenceDatabase(const std::filesystem::path& product_data_folder,
                             const std::filesystem::path& target);

}  // namespace reference
