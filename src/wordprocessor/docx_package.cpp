#include "wordprocessor/docx_package.h"

#include <ctime>
#include <optional>
#include <utility>

#include "platform/failure.h"
#include "wordprocessor/docx_package_check.h"
#include "wordprocessor/docx_zip.h"

namespace wordprocessor {
namespace {

using platform::Failure;

// zlib's own default is 6. 3 packs the repetitive markup of a letter in half the time and some kilobytes
// larger.
constexpr zip_uint32_t kDeflateLevel = 3;

std::string LowerName(std::string_view name) {
  std::string lower(name);
  for (auto& letter : lower) {
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
  }
  return lower;
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
  names_ = CheckPackage(zip.archive.get(), file_name_, limits);
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
