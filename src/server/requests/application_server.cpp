#include "server/requests/application_server.h"

#include <utility>

#include "server/requests/request_processor.h"

namespace server {

ApplicationServer::ApplicationServer(std::filesystem::path data_folder, const ServerParties& parties)
    : data_folder_(std::move(data_folder)), parties_(parties), thread_([this] { Run(); }) {}

ApplicationServer::~ApplicationServer() {
  {
    const std::lock_guard lock(mutex_);
    closing_ = true;
  }
  changed_.notify_one();
  ending_.request_stop();
  thread_.join();
}

void ApplicationServer::Submit(std::string request_text, Answered answered, Deadline deadline) {
  {
    const std::lock_guard lock(mutex_);
    waiting_.push_back({std::move(request_text), std::move(answered), deadline});
  }
  changed_.notify_one();
}

void ApplicationServer::Run() {
  RequestProcessor processor(data_folder_, parties_, ending_.get_token());
  for (;;) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return closing_ || !waiting_.empty(); });
    if (waiting_.empty()) return;
    auto submitted = std::move(waiting_.front());
    waiting_.pop_front();
    lock.unlock();
    submitted.answered(processor.Answer(submitted.request_text, submitted.deadline));
  }
}

}  // namespace server
