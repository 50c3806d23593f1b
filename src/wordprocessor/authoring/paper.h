#pragma once

#include <vector>

#include "wordprocessor/authoring/check.h"
#include "wordprocessor/document/document.h"

namespace wordprocessor {

/// A warning for each page size of `letter`, nothing attached to it yet, that is not the letterhead's,
/// however the page lies: what becomes of it. Throws Failure kDamaged where a part cannot be read.
std::vector<TemplateFinding> CheckPaper(const DocxDocument& letter, const DocxDocument& letterhead);

}  // namespace wordprocessor
