#include "host/event_loop.h"

#include <utility>

namespace host {

void EventLoop::Post(std::function<void()> work) {
  {
    const std::lock_guard lock(mutex_);
    waiting_.push_back(std::move(work));
  }
  posted_.notify_one();
}

bool EventLoop::RunOne(std::chrono::milliseconds patience) {
  std::function<void()> work;
  {
    std::unique_lock lock(mutex_);
    if (!posted_.wait_for(lock, patience, [this] { return !waiting_.empty(); })) return false;
    work = std::move(waiting_.front());
    waiting_.pop_front();
  }
  work();
  return true;
}

void EventLoop::RunPending() {
  while (RunOne(std::chrono::milliseconds{0})) {
  }
}

void EventLoop::RunUntil(const std::function<bool()>& done) {
  // What is waited for may end on another thread without posting anything.
  constexpr std::chrono::milliseconds kPatience{20};
  while (!done()) RunOne(kPatience);
}

}  // namespace host
