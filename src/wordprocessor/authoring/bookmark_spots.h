#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "wordprocessor/cleaning/stories.h"

namespace wordprocessor {

/// Where an author finds each bookmark of a template, as DocxPlaces says it. Nothing is merged yet.
class BookmarkSpots {
 public:
  explicit BookmarkSpots(const DocxStories& letter);

  /// Of several of one name, counted from 0 in document order; those without an end are counted apart. ""
  /// where there is none.
  std::string Of(const std::string& name, std::size_t which = 0, bool has_end = true) const;

 private:
  std::map<std::pair<std::string, bool>, std::vector<std::string>> spots_;
};

}  // namespace wordprocessor
