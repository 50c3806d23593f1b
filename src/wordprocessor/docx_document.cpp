#include "wordprocessor/docx_document.h"

#include <unordered_set>
#include <utility>

#include "wordprocessor/bookmark_merge.h"
#include "wordprocessor/docx_common_template.h"
#include "wordprocessor/docx_file.h"
#include "wordprocessor/print_file.h"

namespace wordprocessor {

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

std::vector<platform::DocumentBookmark> DocxDocument::Bookmarks() const {
  std::vector<platform::DocumentBookmark> bookmarks;
  for (auto& place : BookmarkPlaces()) bookmarks.push_back(std::move(place.bookmark));
  return bookmarks;
}

void DocxDocument::AttachTemplate(const DocxDocument& common) {
  const auto package = DocxPackage::FromBytes(Bytes(), blueprint_->package.file_name());
  auto attached = WithCommonTemplate(package, common.blueprint_->package);
  if (attached) *this = FromBytes(*std::move(attached), blueprint_->package.file_name());
}

std::vector<std::string> DocxDocument::MergeBookmarks(const DataContext& context) {
  std::vector<std::string> unfilled;
  for (std::size_t i = 0; i < edited_.size(); ++i) {
    if (TreeOf(i).bookmarks().empty()) continue;
    if (!edited_[i]) edited_[i] = blueprint_->stories[i].tree;
    MergeBookmarksOf(*edited_[i], context, unfilled);
  }
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
  return blueprint_->package.With(parts);
}

void DocxDocument::Save(const std::filesystem::path& file) const {
  ReplaceFile(file, Bytes());
}

}  // namespace wordprocessor
