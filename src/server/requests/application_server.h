#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <filesystem>
#include <functional>
#include <mutex>
#include <stop_token>
#include <string>
#include <thread>

#include "server/requests/server_parties.h"

namespace server {

/// The application server: a thread of its own that answers requests one after the other, in the order they
/// came, each exactly once. Its data lie in <data>/server; an application object has to exist meanwhile.
class ApplicationServer {
 public:
  /// Data that are missing or wrong are no failure
  /// here: each request is answered with what is wrong, until they are there.
  ApplicationServer(std::filesystem::path data_folder, const ServerParties& parties);
  ApplicationServer(const ApplicationServer&) = delete;
  ApplicationServer& operator=(const ApplicationServer&) = delete;
  /// What was submitted is answered first: a letter that was printed is recorded, though its sender is going.
  /// Queries of letters are broken off, and a verification, with the save that asked for it.
  ~ApplicationServer();

  using Answered = std::function<void(std::string reply_text)>;
  using Deadline = std::chrono::steady_clock::time_point;
  /// From any thread; returns at once. `answered` is called on the server's thread and must not throw. What
  /// the request changes is not changed any more after `deadline`.
  void Submit(std::string request_text, Answered answered, Deadline deadline = Deadline::max());

 private:
  struct Submitted {
    std::string request_text;
    Answered answered;
    Deadline deadline;
  };
  void Run();

  // Constant after construction.
  const std::filesystem::path data_folder_;
  const ServerParties parties_;

  std::stop_source ending_;

  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<Submitted> waiting_;  // guarded by mutex_
  bool closing_ = false;           // guarded by mutex_

  std::thread thread_;  // last: it uses all of the above
};

}  // namespace server
