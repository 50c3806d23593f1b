#pragma once

#include <filesystem>
#include <set>
#include <string>

namespace wordprocessor {

/// The typefaces that a template's styles and text name for letters of the Latin script, those of its theme
/// included. Throws what DocxPackage::FromBytes throws, kNotFound where the file is missing.
std::set<std::string> FontsOf(const std::filesystem::path& file);

/// Whether this machine has the typeface. Where it has not, the layout takes another one without a word, and
/// lines and pages break elsewhere.
bool HasFont(const std::string& family);

}  // namespace wordprocessor
