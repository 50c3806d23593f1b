#pragma once

#include <filesystem>

namespace wordprocessor {

/// Writes the settings the layout process starts with into `profile`, a folder that does not exist yet.
///
/// They keep documents from reaching out (no macros, no links, nothing from untrusted places), keep the
/// office from writing what nobody reads (recovery, histories, lock files), and tell it that its self-tests
/// have been done: a new profile costs no more than an old one. Throws std::filesystem::filesystem_error or
/// std::ios_base::failure.
void SeedProfile(const std::filesystem::path& profile);

}  // namespace wordprocessor
