#pragma once

#include <deque>
#include <functional>
#include <mutex>
#include <utility>

#include <QObject>

#include "platform/parties/host_shell.h"

namespace desktop {

/// Work posted from any thread runs on the thread of this object, from Qt's event loop, in the order posted.
///
/// While a Hold lives nothing runs: message boxes, file dialogs and printing hold replies back. A LetIn
/// inside it (a modal form) lets them run until it ends.
class QtEventQueue : public QObject, public platform::EventQueue {
 public:
  void Post(std::function<void()> work) override;

  /// Holds work back for as long as it lives. User-interface thread only.
  class Hold {
   public:
    explicit Hold(QtEventQueue& queue) : queue_(queue) { ++queue_.holds_; }
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;
    ~Hold() {
      --queue_.holds_;
      queue_.Resume();
    }

   private:
    QtEventQueue& queue_;
  };

  /// Lets work run inside a Hold. User-interface thread only.
  class LetIn {
   public:
    explicit LetIn(QtEventQueue& queue) : queue_(queue), holds_(std::exchange(queue.holds_, 0)) {
      queue_.Resume();
    }
    LetIn(const LetIn&) = delete;
    LetIn& operator=(const LetIn&) = delete;
    ~LetIn() { queue_.holds_ = holds_; }

   private:
    QtEventQueue& queue_;
    const int holds_;
  };

 private:
  void Wake();
  void RunOne();
  /// What was posted during a hold is called for again.
  void Resume();

  std::mutex mutex_;
  std::deque<std::function<void()>> waiting_;  // guarded by mutex_

  int holds_ = 0;
};

}  // namespace desktop
