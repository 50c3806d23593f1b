#include "wordprocessor/files/package.h"

#include <map>
#include <utility>

#include "platform/failure.h"
#include "wordprocessor/files/package_check.h"
#include "wordprocessor/files/zip_content.h"

namespace wordprocessor {
namespace {

using platform::Failure;

std::string LowerName(std::string_view name) {
  std::string lower(name);
  for (auto& letter : lower) {
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
  }
  return lower;
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
  if (!bytes_->starts_with("PK")) RefuseFormat(*bytes_, file_name_);
  entries_ = ReadZipDirectory(*bytes_, file_name_, limits.entries);
  CheckPackage(entries_, file_name_, limits);
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    if (by_name_.emplace(LowerName(entries_[i].name), i).second) continue;
    Damaged("holds the part \"" + ShownZipName(entries_[i].name) +
            "\" twice. Open it in the word processor and save it again.");
  }
}

void DocxPackage::Damaged(const std::string& text) const {
  throw Failure(Failure::Kind::kDamaged, "\"" + file_name_ + "\" " + text);
}

bool DocxPackage::Has(std::string_view name) const {
  return by_name_.contains(LowerName(name));
}

std::string DocxPackage::Read(std::string_view name) const {
  const auto found = by_name_.find(LowerName(name));
  if (found == by_name_.end()) {
    Damaged("lacks its part \"" + std::string(name) + "\". Open it in the word processor and save it again.");
  }
  const auto& entry = entries_[found->second];
  std::string content;
  content.reserve(entry.size);
  UnpackZipEntry(entry, file_name_, [&content](std::string_view piece) { content += piece; });
  return content;
}

std::string DocxPackage::With(const std::vector<PackagePart>& parts,
                              const std::function<bool(std::string_view name)>& keep) const {
  std::vector<const PackagePart*> replaced(entries_.size());
  std::map<std::string, const PackagePart*> added;
  for (const auto& part : parts) {
    const auto name = LowerName(part.name);
    const auto found = by_name_.find(name);
    (found == by_name_.end() ? added[name] : replaced[found->second]) = &part;
  }
  ZipWriter writer;
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    if (keep && !keep(entries_[i].name)) continue;
    if (replaced[i] == nullptr) {
      writer.Copy(entries_[i]);
    } else {
      writer.Add(entries_[i].name, replaced[i]->content, entries_[i].time);
    }
  }
  // Letters made of the same template and data are the same to the byte: a part keeps its template's time.
  const auto time = entries_.empty() ? 0 : entries_.front().time;
  for (const auto& [name, part] : added) writer.Add(part->name, part->content, time);
  return writer.Finish();
}

}  // namespace wordprocessor
