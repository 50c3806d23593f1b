#pragma once

#include <vector>

#include "wordprocessor/printing/merge_jobs.h"

namespace wordprocessor {

/// The jobs that must not be done with the others, by number, each with the reason as its failure: the letter
/// is made by a job before it too, or stands where some job has its template or context, whatever the paths
/// look like (other spellings, links, hard links). Nothing is made or changed; empty where the jobs may be
/// done.
std::vector<MergeResult> MergeClashes(const std::vector<MergeJob>& jobs);

}  // namespace wordprocessor
