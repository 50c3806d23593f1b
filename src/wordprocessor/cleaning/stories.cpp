#include "wordprocessor/cleaning/stories.h"

#include <algorithm>
#include <utility>

#include "wordprocessor/docx/escape.h"

namespace wordprocessor {
namespace {

/// The pages that headers and footers stand on, by their parts; none where they stand on all others.
std::map<std::string, std::string> PagesOfParts(const DocxTree& body,
                                                const std::vector<DocxRelation>& relations) {
  std::map<std::string, std::string> pages;
  for (NodeId node = 0; node < body.size(); ++node) {
    const auto name = LocalNameOf(body[node].name());
    if (name != "headerReference" && name != "footerReference") continue;
    const auto type = body.Attribute(node, "type");
    for (const auto& reference : body.References(node)) {
      const auto relation = std::ranges::find(relations, Unescaped(reference.id), &DocxRelation::id);
      if (relation == relations.end()) continue;
      if (type == "first") pages[relation->target] = " of the first page";
      if (type == "even") pages[relation->target] = " of even pages";
    }
  }
  return pages;
}

}  // namespace

DocxStories::DocxStories(DocxPackage package, std::string main_part)
    : package_(std::move(package)),
      main_part_(std::move(main_part)),
      relations_(ReadRelations(package_, main_part_)),
      stories_(ReadStories(package_, main_part_)),
      pages_(PagesOfParts(stories_.front().tree, relations_)) {}

DocxPlaces DocxStories::PlacesOf(const DocxStory& story) const {
  const auto page = pages_.find(story.part);
  return {story, page == pages_.end() ? std::string() : page->second};
}

}  // namespace wordprocessor
