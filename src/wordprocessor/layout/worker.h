#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

#include "platform/descriptor.h"
#include "wordprocessor/layout/process.h"
#include "wordprocessor/layout/queue.h"

namespace wordprocessor {

/// What is said of a document that is still to be laid out when the program ends.
inline constexpr const char* kClosing = "The program is closing. Start it again and print the letter then.";

/// A layout process and the thread that watches it: gives it jobs, always one ahead, and starts another one
/// when it breaks, hangs, grows or answers nonsense. The document it had in hand fails then; those behind it
/// go back into the queue. One whose process broke off is tried once more, in the new one: a process dies by
/// itself now and then.
class LayoutWorker {
 public:
  /// `put_back` is called from the worker's thread when jobs went back into the queue.
  LayoutWorker(const LayoutSettings& settings, LayoutQueue& queue, std::function<void()> put_back);
  LayoutWorker(const LayoutWorker&) = delete;
  LayoutWorker& operator=(const LayoutWorker&) = delete;
  ~LayoutWorker() { Stop(); }

  /// Kills the process and ends the thread. Jobs in its hands fail.
  void Stop();

  /// There may be something to do. Any thread.
  void Wake();
  /// Start the process though there is nothing to do yet. Any thread.
  void WarmUp();

 private:
  using Clock = std::chrono::steady_clock;

  struct Order {
    std::uint64_t id;
    LayoutJob job;
    std::filesystem::path document;
    std::filesystem::path pdf;  ///< in the process's folder
    // Decision [second-try].
    bool second_try = false;
  };

  void Run();
  void GiveOrders();
  void StartProcess();
  bool GiveOrder();
  void Await();
  int PatienceInMilliseconds() const;
  void TakeReports();
  void Take(const LayoutReport& report);
  void Finish(const LayoutReport& report);
  void CheckTime();
  void CheckMemory();
  void BreakOff();
  void Lose(platform::Failure::Kind kind, const std::string& what_happened);
  void LoseProcess();
  platform::Failure WhyNot(const LayoutJob& job, const std::string& why, platform::Failure::Kind kind) const;
  void StartFailed(const std::string& why);
  void Replace();
  Clock::time_point Deadline() const;

  // Constant after construction.
  const LayoutSettings& settings_;
  LayoutQueue& queue_;
  const std::function<void()> put_back_;
  const platform::Descriptor wake_;

  std::atomic<bool> stopping_ = false;
  std::atomic<bool> warm_up_ = false;

  // The worker's thread alone.
  std::unique_ptr<LayoutProcess> process_;
  bool ready_ = false;        ///< the office in the process is up
  bool replace_ = false;      ///< the process has grown too large: no more orders
  std::deque<Order> orders_;  ///< given and not answered, the one in hand first
  std::optional<LayoutJob> second_try_;
  Clock::time_point since_ = {};  ///< when the process was started, or took up the order in hand
  std::uint64_t last_id_ = 0;

  std::thread thread_;
};

}  // namespace wordprocessor
