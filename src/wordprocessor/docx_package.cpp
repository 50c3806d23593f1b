#include "wordprocessor/docx_package.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <optional>
#include <utility>

#include "platform/failure.h"
#include "wordprocessor/docx_zip.h"

namespace wordprocessor {
namespace {

using platform::Failure;

// zlib's own default is 6. 3 packs the repetitive markup of a letter in half the time and some kilobytes
// larger.
constexpr zip_uint32_t kDeflateLevel = 3;

constexpr std::size_t kChunk = 64 * 1024;

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

std::string LowerName(std::string_view name) {
  std::string lower(name);
  for (auto& letter : lower) {
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
  }
  return lower;
}

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
    const std::string name = entry.name;
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

[[noreturn]] void RefuseFormat(std::string_view bytes, const std::string& file_name) {
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

[[noreturn]] void FailWriting(zip_t* archive) {
  throw Failure(Failure::Kind::kUnavailable,
                std::string("The document could not be packed (") + zip_strerror(archive) + ").");
}

std::string ReadAll(zip_source_t* source) {
  zip_stat_t result;
  if (zip_source_open(source) != 0 || zip_source_stat(source, &result) != 0) {
    throw Failure(Failure::Kind::kUnavailable, "The packed document could not be read back.");
  }
  std::string bytes(result.size, '\0');
  const auto read = zip_source_read(source, bytes.data(), bytes.size());
  zip_source_close(source);
  if (read != static_cast<zip_int64_t>(bytes.size())) {
    throw Failure(Failure::Kind::kUnavailable, "The packed document could not be read back.");
  }
  return bytes;
}

/// Letters made of the same template and data are the same to the byte: a part keeps its template's time.
time_t TimeOf(zip_t* archive, zip_uint64_t index) {
  zip_stat_t entry;
  zip_stat_init(&entry);
  zip_stat_index(archive, index, 0, &entry);
  return (entry.valid & ZIP_STAT_MTIME) != 0 ? entry.mtime : 0;
}

void WritePart(zip_t* archive, std::optional<zip_uint64_t> index, const PackagePart& part) {
  const auto time = TimeOf(archive, index.value_or(0));
  auto source = SourceOf(part.content);
  const auto written =
      index ? zip_file_replace(archive, *index, source.get(), ZIP_FL_ENC_UTF_8) == 0
                  ? static_cast<zip_int64_t>(*index)
                  : -1
            : zip_file_add(archive, std::string(part.name).c_str(), source.get(), ZIP_FL_ENC_UTF_8);
  if (written < 0) FailWriting(archive);
  static_cast<void>(source.release());  // the archive's own from here on
  // "Default" is deflate. Asked for the method an entry has already, libzip forgets the level and takes 9.
  zip_set_file_compression(archive, static_cast<zip_uint64_t>(written), ZIP_CM_DEFAULT, kDeflateLevel);
  zip_file_set_mtime(archive, static_cast<zip_uint64_t>(written), time, 0);
}

}  // namespace

DocxPackage::DocxPackage(std::string bytes, std::string file_name)
    : file_name_(std::move(file_name)), bytes_(std::make_shared<const std::string>(std::move(bytes))) {}

DocxPackage DocxPackage::FromBytes(std::string bytes, const std::string& file_name,
                                   const PackageLimits& limits) {
  DocxPackage package(std::move(bytes), file_name);
  package.Check(limits);
  return package;
}

void DocxPackage::Check(const PackageLimits& limits) {
  // libzip takes zero bytes for an empty archive.
  if (bytes_->empty() || !bytes_->starts_with("PK")) RefuseFormat(*bytes_, file_name_);
  const auto zip = OpenZipBytes(*bytes_, ZIP_RDONLY | ZIP_CHECKCONS);
  if (zip.archive == nullptr) RefuseFormat(*bytes_, file_name_);
  names_ = PackageCheck(zip.archive.get(), file_name_, limits).Run();
  for (std::size_t i = 0; i < names_.size(); ++i) {
    if (entries_.emplace(LowerName(names_[i]), i).second) continue;
    Damaged("holds the part \"" + names_[i] + "\" twice. Open it in the word processor and save it again.");
  }
}

void DocxPackage::Damaged(const std::string& text) const {
  throw Failure(Failure::Kind::kDamaged, "\"" + file_name_ + "\" " + text);
}

bool DocxPackage::Has(std::string_view name) const {
  return entries_.contains(LowerName(name));
}

std::vector<std::string> DocxPackage::Names() const {
  return names_;
}

std::string DocxPackage::Read(std::string_view name) const {
  const auto found = entries_.find(LowerName(name));
  if (found == entries_.end()) {
    Damaged("lacks its part \"" + std::string(name) + "\". Open it in the word processor and save it again.");
  }
  const auto zip = OpenZipBytes(*bytes_, ZIP_RDONLY);
  zip_stat_t entry;
  const ZipFile file(zip.archive ? zip_fopen_index(zip.archive.get(), found->second, 0) : nullptr);
  if (file == nullptr || zip_stat_index(zip.archive.get(), found->second, 0, &entry) != 0) {
    Damaged("is damaged at \"" + std::string(name) + "\". Copy it again from where it came from.");
  }
  std::string content(entry.size, '\0');
  if (zip_fread(file.get(), content.data(), content.size()) != static_cast<zip_int64_t>(content.size())) {
    Damaged("is damaged at \"" + std::string(name) + "\". Copy it again from where it came from.");
  }
  return content;
}

std::string DocxPackage::With(const std::vector<PackagePart>& parts) const {
  if (parts.empty()) return *bytes_;
  auto zip = OpenZipBytes(*bytes_, 0);
  if (zip.archive == nullptr) Damaged("cannot be read again. Copy it again from where it came from.");
  for (const auto& part : parts) {
    const auto found = entries_.find(LowerName(part.name));
    WritePart(zip.archive.get(), found == entries_.end() ? std::optional<zip_uint64_t>() : found->second,
              part);
  }
  if (zip_close(zip.archive.get()) != 0) FailWriting(zip.archive.get());
  static_cast<void>(zip.archive.release());
  return ReadAll(zip.source.get());
}

}  // namespace wordprocessor
