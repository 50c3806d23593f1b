#include "wordprocessor/bookmark_repair.h"

#include <map>
#include <string_view>
#include <utility>

#include "wordprocessor/bookmark_index.h"

namespace wordprocessor {

void JoinSplitBookmarks(DocxTree& tree) {
  const BookmarkIndex index(tree);
  std::map<std::pair<std::string_view, std::uint32_t>, NodeId> open;  // by name and story: the first start
  for (const auto& range : index.ranges) {
    const auto key = std::pair(range.name, range.story);
    const auto found = open.find(key);
    if (found == open.end()) {
      if (!range.has_end()) open.emplace(key, range.start);
      continue;
    }
    tree.Unlink(range.start);
    if (!range.has_end()) continue;
    tree.JoinBookmark(found->second, range.end);
    open.erase(found);
  }
}

}  // namespace wordprocessor
