#include "desktop/qt_event_queue.h"

#include <QMetaObject>

namespace desktop {

void QtEventQueue::Post(std::function<void()> work) {
  {
    const std::lock_guard lock(mutex_);
    waiting_.push_back(std::move(work));
  }
  Wake();
}

void QtEventQueue::Wake() {
  QMetaObject::invokeMethod(
      this, [this] { RunOne(); }, Qt::QueuedConnection);
}

void QtEventQueue::RunOne() {
  // One piece of work a call: one that opens a modal form leaves the next ones to the form's event loop.
  if (holds_ > 0) return;
  std::function<void()> work;
  {
    const std::lock_guard lock(mutex_);
    if (waiting_.empty()) return;
    work = std::move(waiting_.front());
    waiting_.pop_front();
  }
  work();
}

void QtEventQueue::Resume() {
  if (holds_ > 0) return;
  std::size_t count = 0;
  {
    const std::lock_guard lock(mutex_);
    count = waiting_.size();
  }
  for (; count > 0; --count) Wake();
}

}  // namespace desktop
