#include "wordprocessor/authoring/bookmark_spots.h"

#include "wordprocessor/bookmarks/index.h"

namespace wordprocessor {

BookmarkSpots::BookmarkSpots(const DocxStories& letter) {
  for (const auto& story : letter.all()) {
    const BookmarkIndex index(story.tree);
    const auto places = letter.PlacesOf(story);
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
