#pragma once

#include <deque>
#include <functional>
#include <utility>

#include "platform/parties/host_shell.h"

namespace fakes {

/// The event loop of a test: nothing that was posted runs before the test says so.
class ManualEventQueue : public platform::EventQueue {
 public:
  void Post(std::function<void()> work) override { waiting_.push_back(std::move(work)); }

  /// Runs what waits, and what that posts, until nothing waits.
  void RunAll() {
    while (RunOne()) {
    }
  }
  /// Returns whether there was something to run.
  bool RunOne() {
    if (waiting_.empty()) return false;
    auto work = std::move(waiting_.front());
    waiting_.pop_front();
    work();
    return true;
  }
  std::size_t waiting() const { return waiting_.size(); }

 private:
  std::deque<std::function<void()>> waiting_;
};

}  // namespace fakes
