#pragma once

#include "wordprocessor/cleaning/stories.h"
#include "wordprocessor/document/document.h"

/// A template read for its checks: once, however many there are. Both throw Failure kDamaged where a part
/// cannot be read.
namespace wordprocessor {

/// As its author left it.
DocxStories StoriesAsWritten(const DocxDocument& document);

/// As its letters have it: cleaned, with the letterhead where that is attached.
DocxStories StoriesOfLetters(const DocxDocument& document);

}  // namespace wordprocessor
