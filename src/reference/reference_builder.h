#pragma once

#include <filesystem>

namespace reference {

/// Brings the reference database up to date with the tables of an installation (`product_data_folder`
/// "/reference/*.tsv"). Returns whether it had to be written; where `target` was made by this version from
/// the same files, which is the usual start, nothing is read but their sizes and times.
///
/// The database is built beside the target and takes its place when it is whole: a program that reads the
/// former one keeps reading it, and a failure leaves it. Throws Failure kNotFound or kDamaged naming file,
/// line and column of what is wrong, kPermissionDenied or kUnavailable where the target cannot be written.
bool CreateReferenceDatabase(const std::filesystem::path& product_data_folder,
                             const std::filesystem::path& target);

}  // namespace reference
