#include "wordprocessor/files/package_check.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "platform/failure.h"
#include "wordprocessor/files/zip_content.h"

namespace wordprocessor {
namespace {

using platform::Failure;

// MS-CFB 2.2: the first bytes of a compound file; inside, names are UTF-16.
constexpr std::string_view kCompoundFile = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";
constexpr std::string_view kEncryptedPackage("E\0n\0c\0r\0y\0p\0t\0e\0d\0P\0a\0c\0k\0a\0g\0e\0", 32);

struct OtherFormat {
  std::string_view begins_with;
  std::string_view message;
};

constexpr auto kOtherFormats = std::to_array<OtherFormat>({
    {kCompoundFile, "is in the old binary .doc format. Open it in the word processor and save it as .docx."},
    {"{\\rtf", "is a rich-text file. Open it in the word processor and save it as .docx."},
    {"%PDF", "is a PDF file. Use the .docx file it was made from."},
});

bool LeavesThePackage(std::string_view name) {
  if (name.empty() || name.front() == '/' || name.front() == '\\' || name.find(':') != name.npos) return true;
  std::size_t begin = 0;
  while (begin <= name.size()) {
    const auto end = std::min(name.find_first_of("/\\", begin), name.size());
    if (name.substr(begin, end - begin) == "..") return true;
    begin = end + 1;
  }
  return false;
}

class PackageCheck {
 public:
  PackageCheck(const std::string& file_name, const PackageLimits& limits)
      : file_name_(file_name), limits_(limits) {}

  void CheckEntry(const ZipEntry& entry) {
    if (LeavesThePackage(entry.name)) {
      Refuse("holds a part with the unsafe name \"" + ShownZipName(entry.name) +
             "\". Do not use this file; ask where it came from.");
    }
    std::uint64_t size = 0;
    UnpackZipEntry(entry, file_name_, [&](std::string_view piece) {
      size += piece.size();
      total_ += piece.size();
      CheckSize(entry, size);
    });
  }

 private:
  [[noreturn]] void Refuse(const std::string& text) const {
    throw Failure(Failure::Kind::kRefused, "\"" + file_name_ + "\" " + text);
  }

  void CheckSize(const ZipEntry& entry, std::uint64_t size) const {
    const bool bomb = size > limits_.ratio_from && size / limits_.ratio > entry.packed.size();
    if (!bomb && total_ <= limits_.total_size) return;
    Refuse("unpacks to far more than a letter (at \"" + ShownZipName(entry.name) +
           "\"). Do not use this file; ask where it came from.");
  }

  const std::string& file_name_;
  const PackageLimits& limits_;
  std::uint64_t total_ = 0;
};

}  // namespace

void RefuseFormat(std::string_view bytes, const std::string& file_name) {
  std::string_view message = "is no .docx document. Open it in the word processor and save it as .docx.";
  auto kind = Failure::Kind::kDamaged;
  for (const auto& format : kOtherFormats) {
    if (bytes.starts_with(format.begins_with)) message = format.message;
  }
  if (bytes.empty()) message = "is empty. Copy it again from where it came from.";
  if (bytes.starts_with(kCompoundFile) && bytes.find(kEncryptedPackage) != bytes.npos) {
    message = "is protected with a password. Open it in the word processor and save it without one.";
    kind = Failure::Kind::kRefused;
  }
  throw Failure(kind, "\"" + file_name + "\" " + std::string(message));
}

void CheckPackage(const std::vector<ZipEntry>& entries, const std::string& file_name,
                  const PackageLimits& limits) {
  PackageCheck check(file_name, limits);
  for (const auto& entry : entries) check.CheckEntry(entry);
}

}  // namespace wordprocessor
