#include "wordprocessor/document/document.h"

#include <unordered_set>
#include <utility>

#include "platform/whole_file.h"
#include "wordprocessor/bookmarks/merge.h"
#include "wordprocessor/document/common_template.h"
#include "wordprocessor/document/letter_date.h"
#include "wordprocessor/files/package_file.h"

namespace wordprocessor {
namespace {

// The field of a letter that holds the name of the office it comes from.
constexpr std::string_view kOfficeField = "OFFICE_NAME";

/// Returns false where there are dates but the letter has none; they stay as the template shows them.
bool FillDates(DocxTree& tree, const std::vector<LetterDatePlace>& dates, const DataContext& context) {
  const auto* date = dates.empty() ? nullptr : context.Find(kLetterDateField);
  if (date == nullptr || date->text.empty()) return dates.empty();
  for (const auto& place : dates) tree.SetText(place.text, LetterDateIn(place.picture, date->text));
  return true;
}

}  // namespace

DocxDocument DocxDocument::Open(const std::filesystem::path& file) {
  return FromBytes(ReadFile(file).bytes, file.string());
}

DocxDocument DocxDocument::FromBytes(std::string bytes, const std::string& file_name) {
  return DocxDocument(DocxBlueprint::Read(DocxPackage::FromBytes(std::move(bytes), file_name)));
}

DocxDocument::DocxDocument(std::shared_ptr<const DocxBlueprint> blueprint)
    : blueprint_(std::move(blueprint)), edited_(blueprint_->stories.size()) {}

const DocxTree& DocxDocument::TreeOf(std::size_t story) const {
  return edited_[story] ? *edited_[story] : blueprint_->stories[story].tree;
}

std::vector<BookmarkPlace> DocxDocument::BookmarkPlaces() const {
  std::vector<BookmarkPlace> places;
  for (std::size_t i = 0; i < edited_.size(); ++i) {
    auto of_part = BookmarkPlacesOf(TreeOf(i), blueprint_->stories[i].kind);
    std::move(of_part.begin(), of_part.end(), std::back_inserter(places));
  }
  return places;
}

std::vector<std::string> DocxDocument::BookmarksWithoutEnd() const {
  std::vector<std::string> names;
  for (std::size_t i = 0; i < edited_.size(); ++i) {
    auto of_part = wordprocessor::BookmarksWithoutEnd(TreeOf(i));
    std::move(of_part.begin(), of_part.end(), std::back_inserter(names));
  }
  return names;
}

std::vector<std::string> DocxDocument::BookmarksInRowsOf(const std::string& table) const {
  std::vector<std::string> names;
  for (std::size_t i = 0; i < edited_.size(); ++i) {
    auto of_part = wordprocessor::BookmarksInRowsOf(TreeOf(i), table);
    std::move(of_part.begin(), of_part.end(), std::back_inserter(names));
  }
  return names;
}

std::vector<platform::DocumentBookmark> DocxDocument::Bookmarks() const {
  std::vector<platform::DocumentBookmark> bookmarks;
  for (auto& place : BookmarkPlaces()) bookmarks.push_back(std::move(place.bookmark));
  return bookmarks;
}

void DocxDocument::AttachTemplate(const DocxDocument& common) {
  const auto& source = blueprint_->source;
  auto attached = WithCommonTemplate(source, common.blueprint_->source);
  if (attached) *this = FromBytes(*std::move(attached), source.file_name());
}

std::vector<std::string> DocxDocument::MergeBookmarks(const DataContext& context) {
  std::vector<std::string> unfilled;
  for (std::size_t i = 0; i < edited_.size(); ++i) {
    const auto& story = blueprint_->stories[i];
    if (TreeOf(i).bookmarks().empty() && story.dates.empty()) continue;
    if (!edited_[i]) edited_[i] = story.tree;
    // Before rows are repeated, so that every row gets it.
    if (!FillDates(*edited_[i], story.dates, context)) unfilled.emplace_back(kLetterDateField);
    MergeBookmarksOf(*edited_[i], context, unfilled);
  }
  const auto* office = context.Find(kOfficeField);
  office_ = office == nullptr ? std::string() : office->text;
  std::unordered_set<std::string> known;
  std::erase_if(unfilled, [&](const std::string& name) { return !known.insert(name).second; });
  return unfilled;
}

std::string DocxDocument::Bytes() const {
  std::vector<std::string> contents;
  contents.reserve(edited_.size());
  std::vector<PackagePart> parts;
  for (std::size_t i = 0; i < edited_.size(); ++i) {
    if (!edited_[i]) continue;
    contents.push_back(edited_[i]->Serialize());
    parts.push_back({blueprint_->stories[i].part, contents.back()});
  }
  return blueprint_->outgoing.OfOffice(office_)->With(parts);
}

void DocxDocument::Save(const std::filesystem::path& file) const {
  platform::ReplaceFile(file, Bytes());
}

}  // namespace wordprocessor
