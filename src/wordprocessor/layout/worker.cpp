#include "wordprocessor/layout/worker.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <system_error>
#include <utility>

#include "platform/file_access.h"
#include "platform/whole_file.h"

namespace wordprocessor {
namespace {

using platform::Failure;

/// The order in hand and the next one: the process never waits for this one.
constexpr std::size_t kOrdersAhead = 2;
constexpr std::chrono::milliseconds kMemoryCheck(100);
constexpr std::uint64_t kMegabyte = 1024ULL * 1024;

constexpr std::string_view kCheckTemplate =
    " Open its template in a word processor and check it; other letters are not affected.";

// A process that has gone is seen by the failing write; the signal would end this program.
void BlockPipeSignal() {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGPIPE);
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

Failure CouldNotLayOut(const std::string& name, const std::string& why, Failure::Kind kind) {
  return {kind, "The letter \"" + name + "\" could not be laid out. " + why};
}

// The office says of a full disk that it cannot write, cannot read, or nothing, and gives back what it had
// used. Where there is no room for this much besides, that was it.
constexpr off_t kRoomForPages = 4 * 1024 * 1024;

bool IsFull(const std::filesystem::path& folder) {
  const auto file = folder / "room";
  const platform::Descriptor probe(platform::OpenNewFile(file));
  if (!probe) return errno == ENOSPC || errno == EDQUOT;
  const int error = posix_fallocate(probe.number(), 0, kRoomForPages);
  unlink(file.c_str());
  return error == ENOSPC || error == EDQUOT || error == EFBIG;
}

void Remove(const std::filesystem::path& file) {
  std::error_code ignored;
  std::filesystem::remove(file, ignored);
}

}  // namespace

LayoutWorker::LayoutWorker(const LayoutSettings& settings, LayoutQueue& queue, std::function<void()> put_back)
    : settings_(settings),
      queue_(queue),
      put_back_(std::move(put_back)),
      wake_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      thread_([this] { Run(); }) {}

void LayoutWorker::Stop() {
  stopping_ = true;
  Wake();
  if (thread_.joinable()) thread_.join();
}

void LayoutWorker::Wake() {
  static_cast<void>(eventfd_write(wake_.number(), 1));
}

void LayoutWorker::WarmUp() {
  warm_up_ = true;
  Wake();
}

void LayoutWorker::Run() {
  BlockPipeSignal();
  while (!stopping_) {
    GiveOrders();
    Await();
  }
  process_.reset();
  for (auto& order : orders_) order.job.done(Failure(Failure::Kind::kUnavailable, kClosing));
  if (second_try_) second_try_->done(Failure(Failure::Kind::kUnavailable, kClosing));
}

void LayoutWorker::GiveOrders() {
  const bool has_job = second_try_ || !queue_.IsEmpty();
  if (process_ == nullptr && (warm_up_.exchange(false) || has_job)) StartProcess();
  while (ready_ && !replace_ && orders_.size() < kOrdersAhead && GiveOrder()) {
  }
}

void LayoutWorker::StartProcess() {
  try {
    process_ = std::make_unique<LayoutProcess>(settings_.worker_program, settings_.work_folder,
                                               settings_.stop_above_bytes);
    since_ = Clock::now();
  } catch (const Failure& failure) {
    StartFailed(failure.description());
  }
}

/// False when there is no job to give. One is taken ahead only while every other worker can have one too.
bool LayoutWorker::GiveOrder() {
  const bool second_try = second_try_.has_value();
  auto job = second_try ? std::exchange(second_try_, std::nullopt)
                        : queue_.Take(orders_.empty() ? 1 : static_cast<std::size_t>(settings_.workers));
  if (!job) return false;
  const auto file = process_->folder() / ("letter-" + std::to_string(++last_id_));
  Order order{last_id_, std::move(*job), file.string() + ".docx", file.string() + ".pdf", second_try};
  try {
    platform::WriteScratchFile(order.document, order.job.document);
  } catch (const Failure& failure) {
    order.job.done(failure);
    return true;
  }
  if (orders_.empty()) since_ = Clock::now();
  orders_.push_back(std::move(order));
  const auto& given = orders_.back();
  // Where it does not listen any more, the end of its reports says so in a moment.
  process_->Send({given.id, given.document.string(), given.pdf.string()});
  return true;
}

void LayoutWorker::Await() {
  std::array<pollfd, 2> watched = {
      {{wake_.number(), POLLIN, 0}, {process_ != nullptr ? process_->reports() : -1, POLLIN, 0}}};
  if (poll(watched.data(), watched.size(), PatienceInMilliseconds()) < 0) return;
  eventfd_t ignored = 0;
  if (watched[0].revents != 0) static_cast<void>(eventfd_read(wake_.number(), &ignored));
  if (watched[1].revents != 0) TakeReports();
  if (process_ != nullptr) CheckTime();
  if (process_ != nullptr) CheckMemory();
}

LayoutWorker::Clock::time_point LayoutWorker::Deadline() const {
  if (process_ == nullptr) return Clock::time_point::max();
  if (!ready_) return since_ + settings_.start_time;
  return orders_.empty() ? Clock::time_point::max() : since_ + settings_.document_time;
}

int LayoutWorker::PatienceInMilliseconds() const {
  const auto deadline = Deadline();
  if (deadline == Clock::time_point::max()) return -1;
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
  return static_cast<int>(std::clamp(left, std::chrono::milliseconds(0), kMemoryCheck).count());
}

void LayoutWorker::TakeReports() {
  const bool more = process_->Receive();
  while (process_ != nullptr) {
    const auto line = process_->TakeLine();
    if (!line) break;
    const auto report = ParseReport(*line);
    if (!report) return Lose(Failure::Kind::kInternal, "The layout process answered nonsense");
    Take(*report);
  }
  if (process_ != nullptr && !more) BreakOff();
}

void LayoutWorker::Take(const LayoutReport& report) {
  using Kind = LayoutReport::Kind;
  if (report.kind == Kind::kBroken && !ready_) return StartFailed(report.why);
  if (report.kind == Kind::kReady && !ready_) {
    ready_ = true;
    return;
  }
  if (report.kind == Kind::kSpent && ready_) return LoseProcess();
  const bool answer = report.kind == Kind::kDone || report.kind == Kind::kFailed;
  if (answer && ready_ && !orders_.empty() && orders_.front().id == report.id) return Finish(report);
  Lose(Failure::Kind::kInternal, "The layout process answered what was not asked");
}

void LayoutWorker::Finish(const LayoutReport& report) {
  auto order = std::move(orders_.front());
  orders_.pop_front();
  since_ = Clock::now();
  replace_ = replace_ || report.resident_kib * 1024 > settings_.replace_above_bytes;
  std::optional<Failure> failure;
  if (report.kind == LayoutReport::Kind::kFailed) {
    failure = WhyNot(order.job, "The office says: " + report.why + "." + std::string(kCheckTemplate),
                     Failure::Kind::kDamaged);
  } else {
    try {
      platform::MoveWholeFile(order.pdf, order.job.pdf);
    } catch (const Failure& refused) {
      failure = refused;
    }
  }
  Remove(order.document);
  Remove(order.pdf);
  order.job.done(std::move(failure));
  if (replace_ && orders_.empty()) Replace();
}

/// Says of a full disk that it is one, whatever it looked like.
Failure LayoutWorker::WhyNot(const LayoutJob& job, const std::string& why, Failure::Kind kind) const {
  if (process_ == nullptr || !IsFull(process_->folder())) return CouldNotLayOut(job.name, why, kind);
  return CouldNotLayOut(job.name,
                        "The disk of the folder \"" + settings_.work_folder.string() +
                            "\" is full or nearly so. Free some space there and try again.",
                        Failure::Kind::kUnavailable);
}

void LayoutWorker::CheckTime() {
  if (Clock::now() < Deadline()) return;
  if (!ready_) {
    return StartFailed("The layout process did not come up in time. Close other programs and try again.");
  }
  const auto seconds = std::chrono::ceil<std::chrono::seconds>(settings_.document_time).count();
  Lose(Failure::Kind::kTimedOut, "The layout took longer than " + std::to_string(seconds) + " seconds");
}

void LayoutWorker::CheckMemory() {
  if (orders_.empty() || process_->ResidentBytes() <= settings_.stop_above_bytes) return;
  Lose(Failure::Kind::kDamaged, "The layout took more than " +
                                    std::to_string(settings_.stop_above_bytes / kMegabyte) + " MB of memory");
}

void LayoutWorker::BreakOff() {
  const auto ending = " (" + process_->End() + ")";
  const bool in_hand = ready_ && !orders_.empty();
  if (in_hand && orders_.front().second_try) {
    return Lose(Failure::Kind::kDamaged, "The layout process broke off twice" + ending);
  }
  if (!in_hand || IsFull(process_->folder())) {
    return Lose(Failure::Kind::kDamaged, "The layout process broke off" + ending);
  }
  second_try_ = std::move(orders_.front().job);
  orders_.pop_front();
  LoseProcess();
}

/// The process is of no use any more. What it had in hand is to blame; what lay behind that is not.
void LayoutWorker::Lose(Failure::Kind kind, const std::string& what_happened) {
  if (!ready_) return StartFailed(what_happened + " before it was ready. Try again.");
  // A process that dies with nothing in hand is started again by the next job, not in a circle.
  if (orders_.empty()) {
    Replace();
    warm_up_ = false;
    return;
  }
  const auto job = std::move(orders_.front().job);
  orders_.pop_front();
  const auto failure = WhyNot(job, what_happened + "." + std::string(kCheckTemplate), kind);
  LoseProcess();
  job.done(failure);
}

/// Orders that were not in hand yet go back into the queue.
void LayoutWorker::LoseProcess() {
  auto orders = std::exchange(orders_, {});
  Replace();
  while (!orders.empty()) {
    queue_.PutBack(std::move(orders.back().job));
    orders.pop_back();
    put_back_();
  }
}

/// Costs the next job, which would have to wait for ever otherwise; the one after it tries again.
void LayoutWorker::StartFailed(const std::string& why) {
  auto job = second_try_ ? std::exchange(second_try_, std::nullopt) : queue_.Take();
  std::optional<Failure> failure;
  if (job) failure = WhyNot(*job, why, Failure::Kind::kUnavailable);
  process_.reset();
  if (job) job->done(failure);
  if (!queue_.IsEmpty()) Wake();
}

void LayoutWorker::Replace() {
  process_.reset();
  ready_ = false;
  replace_ = false;
  warm_up_ = true;
}

}  // namespace wordprocessor
