#include "wordprocessor/layout/queue.h"

#include <system_error>
#include <utility>

namespace wordprocessor {

LayoutSettings LayoutSettings::ForThisProgram() {
  std::error_code ignored;
  LayoutSettings settings;
  settings.worker_program =
      std::filesystem::read_symlink("/proc/self/exe", ignored).parent_path() / "zemlo-office-worker";
  settings.work_folder = std::filesystem::temp_directory_path(ignored);
  if (settings.work_folder.empty()) settings.work_folder = "/tmp";
  return settings;
}

void LayoutQueue::Put(LayoutJob job) {
  const std::lock_guard lock(mutex_);
  waiting_.push_back(std::move(job));
}

void LayoutQueue::PutBack(LayoutJob job) {
  const std::lock_guard lock(mutex_);
  waiting_.push_front(std::move(job));
}

std::optional<LayoutJob> LayoutQueue::Take(std::size_t at_least) {
  const std::lock_guard lock(mutex_);
  if (waiting_.empty() || waiting_.size() < at_least) return std::nullopt;
  auto job = std::move(waiting_.front());
  waiting_.pop_front();
  return job;
}

bool LayoutQueue::IsEmpty() const {
  const std::lock_guard lock(mutex_);
  return waiting_.empty();
}

}  // namespace wordprocessor
