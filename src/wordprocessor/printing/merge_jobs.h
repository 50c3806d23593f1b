#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/failure.h"
#include "wordprocessor/layout/pool.h"

namespace wordprocessor {

/// One letter to make from files: the template filled from the data context, written as .docx or .pdf by the
/// ending of `output`. The common template "kvcorr.dot" is attached where it lies beside the template.
struct MergeJob {
  int number = 1;  ///< its line, counted from 1
  std::filesystem::path template_file;
  std::filesystem::path context_file;
  std::filesystem::path output;
};

struct MergeResult {
  int number = 1;
  std::filesystem::path output;
  std::vector<std::string> not_filled = {};                 ///< bookmarks without a field, in document order
  std::optional<platform::Failure> failure = std::nullopt;  ///< then there is no output
};

struct MergeJobList {
  std::vector<MergeJob> jobs;
  std::vector<MergeResult> bad_lines;
};

/// Reads one job a line: TEMPLATE, CONTEXT and OUT, parted by tabs. Blank lines and those that begin with "#"
/// are passed over. A line that is no job comes back as a failed result of that number; the others count.
MergeJobList ReadMergeJobs(std::string_view text);

struct MergeWishes {
  /// Make a letter though nothing fills some of its bookmarks; else it fails, and `not_filled` names them.
  bool allow_unfilled = false;
  /// Asked before each letter: true begins no further one. Empty for never.
  std::function<bool()> stop = {};
};

/// Does the jobs, which must not clash (merge_clashes.h), and tells each result, from this thread, as it
/// comes. Returns how many it has begun, from the first one on, when all of those are told. A job that fails
/// costs nobody else anything. Letters are merged here while the pool's processes lay out those before; the
/// pool starts no process where every output is a .docx.
std::size_t RunMergeJobs(const std::vector<MergeJob>& jobs, LayoutPool& pool, const MergeWishes& wishes,
                         const std::function<void(const MergeResult&)>& on_result);

}  // namespace wordprocessor
