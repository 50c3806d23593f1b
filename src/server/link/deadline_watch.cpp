#include "server/link/deadline_watch.h"

#include <utility>

namespace server {

DeadlineWatch::DeadlineWatch(std::function<void(const std::string& name)> passed)
    : passed_(std::move(passed)), thread_([this] { Run(); }) {}

DeadlineWatch::~DeadlineWatch() {
  {
    const std::lock_guard lock(mutex_);
    closing_ = true;
  }
  changed_.notify_one();
  thread_.join();
}

void DeadlineWatch::Add(std::string name, Clock::time_point deadline) {
  {
    const std::lock_guard lock(mutex_);
    deadlines_.emplace(deadline, std::move(name));
  }
  changed_.notify_one();
}

void DeadlineWatch::Remove(const std::string& name) {
  const std::lock_guard lock(mutex_);
  std::erase_if(deadlines_, [&](const auto& entry) { return entry.second == name; });
}

void DeadlineWatch::Run() {
  std::unique_lock lock(mutex_);
  while (!closing_) {
    if (deadlines_.empty()) {
      changed_.wait(lock);
      continue;
    }
    const auto first = deadlines_.begin();
    if (Clock::now() < first->first) {
      changed_.wait_until(lock, Clock::time_point(first->first));
      continue;
    }
    const auto name = first->second;
    deadlines_.erase(first);
    lock.unlock();
    passed_(name);
    lock.lock();
  }
}

}  // namespace server
