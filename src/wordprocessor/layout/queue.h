#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <functional>
#include <mutex>
#include <optional>
#include <string>

#include "platform/failure.h"

namespace wordprocessor {

/// How letters are laid out. Constant once a pool is made with it.
struct LayoutSettings {
  std::filesystem::path worker_program;  ///< zemlo-office-worker
  std::filesystem::path work_folder;     ///< private folders are made in it and removed again
  int workers = 1;                       ///< one for a screen; up to one a core for long runs
  std::chrono::milliseconds start_time = std::chrono::seconds(60);     ///< for the office to come up
  std::chrono::milliseconds document_time = std::chrono::seconds(60);  ///< for one document
  /// A worker that holds more RAM than this after a document is replaced by a new one.
  std::uint64_t replace_above_bytes = 700ULL * 1024 * 1024;
  /// A worker that reaches this in the midst of a document is stopped; the office alone takes some 200 MB.
  std::uint64_t stop_above_bytes = 2048ULL * 1024 * 1024;

  /// For this program as it is installed: the worker beside it, the system's folder for temporary files.
  static LayoutSettings ForThisProgram();
};

/// One document on its way to its pages.
struct LayoutJob {
  std::string name;           ///< what messages call it
  std::string document;       ///< the DOCX file's bytes
  std::filesystem::path pdf;  ///< appears whole or not at all
  /// Called once, without a failure when `pdf` is there. From a thread of the pool, which waits for it; must
  /// not throw.
  std::function<void(std::optional<platform::Failure>)> done;
};

/// The jobs that no worker has taken yet. Any thread.
class LayoutQueue {
 public:
  void Put(LayoutJob job);
  /// Before all others: a job taken by a worker that was lost.
  void PutBack(LayoutJob job);
  /// The next job where at least `at_least` are waiting.
  std::optional<LayoutJob> Take(std::size_t at_least = 1);
  bool IsEmpty() const;

 private:
  mutable std::mutex mutex_;
  std::deque<LayoutJob> waiting_;  // guarded by mutex_
};

}  // namespace wordprocessor
