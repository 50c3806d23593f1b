#include "desktop/shell/qt_event_queue.h"

#include <QMetaObject>

namespace desktop {

void QtEventQueue::Post(std::function<void()> work) {
  bool first = false;
  {
    const std::lock_guard lock(mutex_);
    first = waiting_.empty();
    waiting_.push_back(std::move(work));
  }
  if (first) Wake();  // else a call is on its way, or the end of a hold makes one
}

void QtEventQueue::Wake() {
  QMetaObject::invokeMethod(
      this, [this] { RunOne(); }, Qt::QueuedConnection);
}

void QtEventQueue::RunOne() {
  if (holds_ > 0) return;
  std::function<void()> work;
  bool more = false;
  {
    const std::lock_guard lock(mutex_);
    if (waiting_.empty()) return;
    work = std::move(waiting_.front());
    waiting_.pop_front();
    more = !waiting_.empty();
  }
  // Called for before the work runs: one that opens a modal form leaves the next to the form's event loop.
  if (more) Wake();
  work();
}

void QtEventQueue::Resume() {
  if (holds_ > 0) return;
  const std::lock_guard lock(mutex_);
  if (!waiting_.empty()) Wake();
}

}  // namespace desktop
