#pragma once

#include <ostream>
#include <vector>

#include "apps/letters/listing.h"
#include "wordprocessor/authoring/check.h"

namespace apps {

/// What the check of a template finds, as a list for programs.
Listing Findings(const std::vector<wordprocessor::TemplateFinding>& findings);
/// A line for each: grade, bookmark and place, sentence.
void TellFindings(const std::vector<wordprocessor::TemplateFinding>& findings, std::ostream& out);

}  // namespace apps
