#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <list>
#include <memory>
#include <mutex>
#include <string>

#include "wordprocessor/document/document.h"
#include "wordprocessor/files/package_file.h"

namespace wordprocessor {

/// Hands out fresh documents of templates; a template used again is neither read nor parsed again while its
/// file stays the same.
///
/// Any number of threads; the documents it hands out belong to one each.
class TemplateCache {
 public:
  explicit TemplateCache(std::size_t capacity = 16) : capacity_(capacity) {}

  /// A document of `letter` with `common` attached, where that is not empty. Throws as DocxDocument::Open.
  DocxDocument Open(const std::filesystem::path& letter, const std::filesystem::path& common = {});

 private:
  struct Entry {
    std::filesystem::path letter;
    std::filesystem::path common;
    FileIdentity letter_identity;
    FileIdentity common_identity;
    DocxDocument document;
  };

  Entry Read(const std::filesystem::path& letter, const std::filesystem::path& common) const;

  // Constant after construction.
  const std::size_t capacity_;

  std::mutex mutex_;
  std::list<Entry> entries_;  // the one used last comes first
};

}  // namespace wordprocessor
