#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "wordprocessor/files/package.h"
#include "wordprocessor/files/zip_directory.h"

namespace wordprocessor {

/// Throws what is to be said of a file that is no zip file, or one that cannot be opened.
[[noreturn]] void RefuseFormat(std::string_view bytes, const std::string& file_name);

/// Unpacks and counts every entry; looks at the names. Throws as DocxPackage::FromBytes.
void CheckPackage(const std::vector<ZipEntry>& entries, const std::string& file_name,
                  const PackageLimits& limits);

}  // namespace wordprocessor
