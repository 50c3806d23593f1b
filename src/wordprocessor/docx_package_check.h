#pragma once

#include <zip.h>

#include <string>
#include <string_view>
#include <vector>

#include "wordprocessor/docx_package.h"

namespace wordprocessor {

/// Throws what is to be said of a file that is no zip file, or one that cannot be opened.
[[noreturn]] void RefuseFormat(std::string_view bytes, const std::string& file_name);

/// The names of all entries, by their index; each has been unpacked and counted. Throws as
/// DocxPackage::FromBytes.
std::vector<std::string> CheckPackage(zip_t* archive, const std::string& file_name,
                                      const PackageLimits& limits);

}  // namespace wordprocessor
