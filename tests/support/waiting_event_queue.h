#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>

#include <gtest/gtest.h>

#include "platform/host_shell.h"

namespace tests {

/// An event loop that takes work from other threads and is run by the test.
class WaitingEventQueue : public platform::EventQueue {
 public:
  void Post(std::function<void()> work) override {
    const std::lock_guard lock(mutex_);
    waiting_.push_back(std::move(work));
    posted_.notify_all();
  }

  /// Runs what waits, until nothing does.
  void RunPending() {
    while (auto work = Take(std::chrono::milliseconds(0))) work();
  }
  /// Runs work as it comes until `done` holds; a test that waits ten seconds for it has failed.
  void RunUntil(const std::function<bool()>& done) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!done()) {
      if (auto work = Take(std::chrono::milliseconds(5))) work();
      if (std::chrono::steady_clock::now() > end) {
        ADD_FAILURE() << "what was waited for did not come";
        return;
      }
    }
  }

 private:
  std::function<void()> Take(std::chrono::milliseconds patience) {
    std::unique_lock lock(mutex_);
    posted_.wait_for(lock, patience, [this] { return !waiting_.empty(); });
    if (waiting_.empty()) return nullptr;
    auto work = std::move(waiting_.front());
    waiting_.pop_front();
    return work;
  }

  std::mutex mutex_;
  std::condition_variable posted_;
  std::deque<std::function<void()>> waiting_;  // guarded by mutex_
};

}  // namespace tests
