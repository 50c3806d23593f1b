#pragma once

#include "apps/letters/headless_office.h"

namespace apps {

/// Writes what came of the letters that were given to the batch run, or taken back, and answers the status to
/// exit with: kRefused where one was refused or no answer came.
int TellItemOutcomes(HeadlessOffice& office, bool as_json);

}  // namespace apps
