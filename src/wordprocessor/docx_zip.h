#pragma once

#include <zip.h>

#include <memory>
#include <string>
#include <string_view>

/// What libzip hands out, owned.
namespace wordprocessor {

struct ZipSourceFree {
  void operator()(zip_source_t* source) const { zip_source_free(source); }
};
struct ZipDiscard {
  void operator()(zip_t* archive) const { zip_discard(archive); }
};
struct ZipFileClose {
  void operator()(zip_file_t* file) const { zip_fclose(file); }
};

using ZipSource = std::unique_ptr<zip_source_t, ZipSourceFree>;
using ZipArchive = std::unique_ptr<zip_t, ZipDiscard>;
using ZipFile = std::unique_ptr<zip_file_t, ZipFileClose>;

/// The bytes have to outlive it. Throws Failure kUnavailable without memory.
ZipSource SourceOf(std::string_view bytes);

/// The archive, and the source it reads from and writes to.
struct OpenZip {
  ZipSource source;
  ZipArchive archive;  ///< empty where it could not be opened; `error` says why
  int error = 0;
};

OpenZip OpenZipBytes(std::string_view bytes, int flags);

}  // namespace wordprocessor
