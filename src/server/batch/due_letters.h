#pragma once

#include <vector>

#include "platform/value.h"
#include "server/batch/batch_rules.h"
#include "server/batch/batch_runs.h"

namespace server {

/// What a night of `today` has to make, each letter once, in this order: what waits (resubmitted letters, and
/// those of corrected addresses), what the rules ask for, what was made on line for the batch. A rule's
/// letter about an account is due again when AGAIN_AFTER days have passed since the last one, made or failed;
/// not while such a letter waits. What a run has claimed is not among them.
std::vector<RunItem> FindDueLetters(Database& database, const std::vector<BatchRule>& rules,
                                    platform::Date today);

}  // namespace server
