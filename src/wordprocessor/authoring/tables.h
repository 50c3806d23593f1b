#pragma once

#include <vector>

#include "wordprocessor/authoring/check.h"
#include "wordprocessor/document/document.h"

namespace wordprocessor {

/// A warning for each table that a field repeats rows of below rows of the author's own, none of which is
/// marked as the table's heading. Other tables are left alone: letters set addresses and references in them.
/// Throws Failure kDamaged where a part cannot be read.
std::vector<TemplateFinding> CheckTableHeads(const DocxDocument& document,
                                             const std::vector<TemplateField>& fields);

}  // namespace wordprocessor
