#pragma once

#include <vector>

#include "wordprocessor/authoring/bookmark_spots.h"
#include "wordprocessor/authoring/check.h"
#include "wordprocessor/cleaning/stories.h"

namespace wordprocessor {

/// A warning for each table that a field repeats rows of below rows of the author's own, none of which is
/// marked as the table's heading. Other tables are left alone: letters set addresses and references in them.
/// `spots` are the letter's.
std::vector<TemplateFinding> CheckTableHeads(const DocxStories& letter, const BookmarkSpots& spots,
                                             const std::vector<TemplateField>& fields);

}  // namespace wordprocessor
