#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>

#include <gtest/gtest.h>

#include "platform/parties/host_shell.h"
#include "tests/support/patience.h"

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
  /// Runs one piece of work, waiting for it.
  void RunOne() {
    auto work = Take(kPatience);
    ASSERT_TRUE(work) << "nothing was posted";
    work();
  }
  /// Runs work as it comes until `done` holds; a test that waits in vain has failed.
  void RunUntil(const std::function<bool()>& done) {
    const bool came = ComesTrue(done, [this] {
      if (auto work = Take(std::chrono::milliseconds(5))) work();
    });
    EXPECT_TRUE(came) << "what was waited for did not come";
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
