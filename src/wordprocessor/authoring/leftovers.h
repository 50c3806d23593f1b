#pragma once

#include <vector>

#include "wordprocessor/authoring/check.h"
#include "wordprocessor/cleaning/stories.h"

namespace wordprocessor {

/// What a template's author has to settle because letters do not show it as it stands: comments, tracked
/// changes, hidden text, fields that ask, merge or date, and what comes from outside. By parts, in document
/// order. Content controls that take their text from data are none: their letters show the same.
std::vector<TemplateFinding> FindingsOfLeftovers(const DocxStories& written,
                                                 const std::vector<TemplateField>& fields);

}  // namespace wordprocessor
