#include "wordprocessor/document/template_cache.h"

#include <algorithm>
#include <utility>

namespace wordprocessor {

DocxDocument TemplateCache::Open(const std::filesystem::path& letter, const std::filesystem::path& common) {
  const auto letter_identity = FileIdentity::Of(letter);
  const auto common_identity = common.empty() ? FileIdentity() : FileIdentity::Of(common);
  const std::lock_guard lock(mutex_);
  const auto found = std::ranges::find_if(
      entries_, [&](const Entry& entry) { return entry.letter == letter && entry.common == common; });
  if (found != entries_.end()) {
    entries_.splice(entries_.begin(), entries_, found);
    auto& entry = entries_.front();
    if (entry.letter_identity == letter_identity && entry.common_identity == common_identity) {
      return entry.document;
    }
    entries_.pop_front();
  }
  entries_.push_front(Read(letter, common));
  if (entries_.size() > capacity_) entries_.pop_back();
  return entries_.front().document;
}

TemplateCache::Entry TemplateCache::Read(const std::filesystem::path& letter,
                                         const std::filesystem::path& common) const {
  auto content = ReadFile(letter);
  Entry entry{letter,
              common,
              content.identity,
              {},
              DocxDocument::FromBytes(std::move(content.bytes), letter.string())};
  if (common.empty()) return entry;
  auto common_content = ReadFile(common);
  entry.common_identity = common_content.identity;
  entry.document.AttachTemplate(DocxDocument::FromBytes(std::move(common_content.bytes), common.string()));
  return entry;
}

}  // namespace wordprocessor
