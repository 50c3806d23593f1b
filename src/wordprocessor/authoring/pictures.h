#pragma once

#include <vector>

#include "wordprocessor/authoring/check.h"
#include "wordprocessor/document/document.h"

namespace wordprocessor {

/// A warning for each picture, chart or diagram of the document that has no alternative text and is not
/// marked as decorative: whoever has the letter read aloud does not learn of it. A path of the author's
/// machine is none, since letters do not take it along. Throws Failure kDamaged where a part cannot be read.
std::vector<TemplateFinding> CheckPictures(const DocxDocument& document);

}  // namespace wordprocessor
