#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>

#include "platform/parties/host_shell.h"

namespace host {

/// The event loop of a program without a window: work is posted from any thread and run on the one that
/// calls Run...; nested runs (a modal form) take from the same queue.
class EventLoop : public platform::EventQueue {
 public:
  void Post(std::function<void()> work) override;

  /// Runs what waits now, and what that posts, until nothing waits.
  void RunPending();
  /// Runs work as it comes until `done` holds (asked after each piece of work and at least every 20 ms).
  void RunUntil(const std::function<bool()>& done);

 private:
  bool RunOne(std::chrono::milliseconds patience);

  std::mutex mutex_;
  std::condition_variable posted_;
  std::deque<std::function<void()>> waiting_;  // guarded by mutex_
};

}  // namespace host
