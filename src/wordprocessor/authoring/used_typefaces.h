#pragma once

#include <string>
#include <vector>

#include "wordprocessor/cleaning/stories.h"

namespace wordprocessor {

/// A typeface that text of a document is set in.
struct UsedTypeface {
  std::string name;
  std::string place;      ///< of the first text in it, as DocxPlaces says it
  bool embedded = false;  ///< the document brings it along
};

/// The typefaces that a document names for text it has, in the order that an author meets them: by the text's
/// own formatting, its styles, the theme. Names for scripts in which nothing is written do not count, nor do
/// styles without text. Each name once, whatever its case. Throws Failure kDamaged where a part cannot be
/// read.
std::vector<UsedTypeface> FindTypefaces(const DocxStories& letter);

}  // namespace wordprocessor
