#include "wordprocessor/docx_package_check.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "platform/failure.h"
#include "wordprocessor/docx_zip.h"

namespace wordprocessor {
namespace {

using platform::Failure;

constexpr std::size_t kChunk = 65'536;

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
    {"PK", "is damaged or incomplete. Copy it again from where it came from."},
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
  PackageCheck(zip_t* archive, const std::string& file_name, const PackageLimits& limits)
      : archive_(archive), file_name_(file_name), limits_(limits) {}

  std::vector<std::string> Run() {
    const auto count = zip_get_num_entries(archive_, 0);
    if (count > static_cast<zip_int64_t>(limits_.entries)) {
      Refuse("holds more than " + std::to_string(limits_.entries) + " parts. Save it again without extras.");
    }
    std::vector<std::string> names;
    for (zip_int64_t i = 0; i < count; ++i) names.push_back(CheckEntry(static_cast<zip_uint64_t>(i)));
    return names;
  }

 private:
  [[noreturn]] void Refuse(const std::string& text, Failure::Kind kind = Failure::Kind::kRefused) const {
    throw Failure(kind, "\"" + file_name_ + "\" " + text);
  }

  [[noreturn]] void RefuseDamaged(const std::string& entry) const {
    Refuse("is damaged at \"" + entry + "\". Copy it again from where it came from.",
           Failure::Kind::kDamaged);
  }

  std::string CheckEntry(zip_uint64_t index) {
    zip_stat_t entry;
    zip_stat_init(&entry);
    constexpr zip_uint64_t needed = ZIP_STAT_NAME | ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE;
    if (zip_stat_index(archive_, index, 0, &entry) != 0 || (entry.valid & needed) != needed) {
      RefuseDamaged("entry " + std::to_string(index));
    }
    std::string name = entry.name;
    if (LeavesThePackage(name)) {
      Refuse("holds a part with the unsafe name \"" + name +
             "\". Do not use this file; ask where it came from.");
    }
    if ((entry.valid & ZIP_STAT_ENCRYPTION_METHOD) != 0 && entry.encryption_method != ZIP_EM_NONE) {
      Refuse("is protected with a password. Open it in the word processor and save it without one.");
    }
    CountBytes(index, name, entry.comp_size);
    return name;
  }

  void CountBytes(zip_uint64_t index, const std::string& name, zip_uint64_t packed) {
    const ZipFile file(zip_fopen_index(archive_, index, 0));
    if (file == nullptr) RefuseDamaged(name);
    std::uint64_t size = 0;
    std::array<char, kChunk> chunk;
    while (true) {
      const auto read = zip_fread(file.get(), chunk.data(), chunk.size());
      if (read < 0) RefuseDamaged(name);
      if (read == 0) return;
      size += static_cast<std::uint64_t>(read);
      total_ += static_cast<std::uint64_t>(read);
      CheckSize(name, size, packed);
    }
  }

  void CheckSize(const std::string& name, std::uint64_t size, std::uint64_t packed) const {
    const bool bomb = size > limits_.ratio_from && size / limits_.ratio > packed;
    if (!bomb && total_ <= limits_.total_size) return;
    Refuse("unpacks to far more than a letter (at \"" + name +
           "\"). Do not use this file; ask where it came from.");
  }

  zip_t* archive_;
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

std::vector<std::string> CheckPackage(zip_t* archive, const std::string& file_name,
                                      const PackageLimits& limits) {
  return PackageCheck(archive, file_name, limits).Run();
}

}  // namespace wordprocessor
