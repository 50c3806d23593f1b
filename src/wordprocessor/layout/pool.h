#pragma once

#include <filesystem>
#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "wordprocessor/layout/queue.h"
#include "wordprocessor/layout/worker.h"

namespace wordprocessor {

/// Lays letters out in processes of their own, kept warm. Any thread.
///
/// Failures of a job, as its answer: kDamaged for a document the office cannot read or breaks on, kTimedOut,
/// kUnavailable where no layout process starts or the pool is closing, kInternal for one that answers
/// nonsense, and those of platform/whole_file.h where the PDF cannot be written. Each names the letter and
/// says what to do.
class LayoutPool {
 public:
  /// Starts no process yet.
  explicit LayoutPool(LayoutSettings settings);
  LayoutPool(const LayoutPool&) = delete;
  LayoutPool& operator=(const LayoutPool&) = delete;
  /// Ends at once: jobs that are not done fail.
  ~LayoutPool();

  int workers() const { return settings_.workers; }
  const std::filesystem::path& work_folder() const { return settings_.work_folder; }

  /// Starts the processes ahead of the first job.
  void WarmUp();

  /// Jobs are taken up in the order given.
  void Layout(LayoutJob job);
  /// The future throws the Failure.
  std::future<void> Layout(std::string name, std::string document, std::filesystem::path pdf);

 private:
  void WakeAll();

  const LayoutSettings settings_;
  LayoutQueue queue_;
  std::vector<std::unique_ptr<LayoutWorker>> workers_;
};

}  // namespace wordprocessor
