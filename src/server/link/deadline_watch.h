#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <thread>

namespace server {

/// Says when a deadline has passed, on a thread of its own.
class DeadlineWatch {
 public:
  using Clock = std::chrono::steady_clock;

  /// `passed` is called on the watch's thread with the name of the deadline, once each. It must not throw.
  explicit DeadlineWatch(std::function<void(const std::string& name)> passed);
  DeadlineWatch(const DeadlineWatch&) = delete;
  DeadlineWatch& operator=(const DeadlineWatch&) = delete;
  /// Deadlines that have not passed are forgotten.
  ~DeadlineWatch();

  void Add(std::string name, Clock::time_point deadline);
  /// Nothing happens where there is none, or where it has passed already.
  void Remove(const std::string& name);

 private:
  void Run();

  // Constant after construction.
  const std::function<void(const std::string& name)> passed_;

  std::mutex mutex_;
  std::condition_variable changed_;
  std::multimap<Clock::time_point, std::string> deadlines_;  // guarded by mutex_
  bool closing_ = false;                                     // guarded by mutex_

  std::thread thread_;  // last: it uses all of the above
};

}  // namespace server
