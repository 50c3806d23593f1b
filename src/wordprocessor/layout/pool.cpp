#include "wordprocessor/layout/pool.h"

#include <utility>

#include "wordprocessor/layout/folder.h"

namespace wordprocessor {
namespace {

using platform::Failure;

}  // namespace

LayoutPool::LayoutPool(LayoutSettings settings) : settings_(std::move(settings)) {
  LayoutFolder::RemoveLeftovers(settings_.work_folder);
  for (int i = 0; i < settings_.workers; ++i) {
    workers_.push_back(std::make_unique<LayoutWorker>(settings_, queue_, [this] { WakeAll(); }));
  }
}

LayoutPool::~LayoutPool() {
  // All threads end before the first worker goes: until then they wake one another.
  for (const auto& worker : workers_) worker->Stop();
  while (auto job = queue_.Take()) job->done(Failure(Failure::Kind::kUnavailable, kClosing));
}

void LayoutPool::WarmUp() {
  for (const auto& worker : workers_) worker->WarmUp();
}

void LayoutPool::Layout(LayoutJob job) {
  queue_.Put(std::move(job));
  WakeAll();
}

std::future<void> LayoutPool::Layout(std::string name, std::string document, std::filesystem::path pdf) {
  const auto promise = std::make_shared<std::promise<void>>();
  const auto report = [promise](const std::optional<Failure>& failure) {
    if (failure) {
      promise->set_exception(std::make_exception_ptr(*failure));
    } else {
      promise->set_value();
    }
  };
  auto future = promise->get_future();
  Layout(LayoutJob{std::move(name), std::move(document), std::move(pdf), report});
  return future;
}

void LayoutPool::WakeAll() {
  for (const auto& worker : workers_) worker->Wake();
}

}  // namespace wordprocessor
