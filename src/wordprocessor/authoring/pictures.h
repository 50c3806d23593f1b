#pragma once

#include <vector>

#include "wordprocessor/authoring/check.h"
#include "wordprocessor/cleaning/stories.h"

namespace wordprocessor {

/// A warning for each picture, chart or diagram of the letter that has no alternative text and is not
/// marked as decorative: whoever has the letter read aloud does not learn of it. A path of the author's
/// machine is none, since letters do not take it along.
std::vector<TemplateFinding> CheckPictures(const DocxStories& letter);

}  // namespace wordprocessor
