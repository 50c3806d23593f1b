#include "wordprocessor/authoring/bookmark_spots.h"

#include "wordprocessor/bookmarks/index.h"
#include "wordprocessor/cleaning/places.h"
#include "wordprocessor/document/blueprint.h"
#include "wordprocessor/docx/relations.h"

namespace wordprocessor {

BookmarkSpots::BookmarkSpots(const DocxDocument& document) {
  const auto package = DocxPackage::FromBytes(document.Bytes(), document.Source().file_name());
  const auto main_part = FindMainPart(package);
  const auto stories = ReadStories(package, main_part);
  const auto pages = PagesOfParts(stories.front().tree, ReadRelations(package, main_part));
  for (const auto& story : stories) {
    const BookmarkIndex index(story.tree);
    const auto page = pages.find(story.part);
    const DocxPlaces places(story, page == pages.end() ? std::string() : page->second);
    for (const auto& range : index.ranges) {
      if (range.in_fallback) continue;
      spots_[{std::string(range.name), range.has_end()}].push_back(places.Of(range.start));
    }
  }
}

std::string BookmarkSpots::Of(const std::string& name, std::size_t which, bool has_end) const {
  const auto found = spots_.find({name, has_end});
  return found == spots_.end() || which >= found->second.size() ? std::string() : found->second[which];
}

}  // namespace wordprocessor
