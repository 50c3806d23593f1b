#include "wordprocessor/docx_zip.h"

#include "platform/failure.h"

namespace wordprocessor {

ZipSource SourceOf(std::string_view bytes) {
  zip_error_t error;
  zip_error_init(&error);
  ZipSource source(zip_source_buffer_create(bytes.data(), bytes.size(), /*freep=*/0, &error));
  zip_error_fini(&error);
  if (source == nullptr) {
    throw platform::Failure(platform::Failure::Kind::kUnavailable,
                            "There is not enough memory for the document.");
  }
  return source;
}

OpenZip OpenZipBytes(std::string_view bytes, int flags) {
  OpenZip zip;
  zip.source = SourceOf(bytes);
  zip_error_t error;
  zip_error_init(&error);
  zip.archive.reset(zip_open_from_source(zip.source.get(), flags, &error));
  zip.error = zip_error_code_zip(&error);
  zip_error_fini(&error);
  // The archive took over the caller's share of the source; keep one of our own to read the result from.
  if (zip.archive != nullptr) zip_source_keep(zip.source.get());
  return zip;
}

}  // namespace wordprocessor
