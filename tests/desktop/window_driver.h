#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

#include <QApplication>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include "tests/support/patience.h"

namespace tests {

/// Lets the window do what is waiting.
inline void Settle() {
  for (int turn = 0; turn < 5; ++turn) QApplication::processEvents();
}

/// Waits until `done` holds; false when it never does.
inline bool WaitFor(const std::function<bool()>& done) {
  return ComesTrue(done, [] { QApplication::processEvents(QEventLoop::AllEvents, 10); });
}

/// Waits until the window has the keyboard, or can be seen.
inline void WaitForKeyboard(QWidget& window) {
  EXPECT_TRUE(
      QTest::qWaitForWindowActive(&window, static_cast<int>(std::chrono::milliseconds(kPatience).count())));
}
inline void WaitForSight(QWidget& window) {
  EXPECT_TRUE(
      QTest::qWaitForWindowExposed(&window, static_cast<int>(std::chrono::milliseconds(kPatience).count())));
}

/// Runs `work` on the modal window that comes up next, perhaps over one that is there: a box whose event loop
/// the test is inside. It has the keyboard by then, where it takes it within the tests' patience.
inline void OnNextModal(std::function<void(QWidget& window)> work) {
  auto* timer = new QTimer(qApp);
  timer->setInterval(1);
  const QPointer<QWidget> below = QApplication::activeModalWidget();
  const auto until = std::chrono::steady_clock::now() + kPatience;
  QObject::connect(timer, &QTimer::timeout, timer, [timer, below, until, work = std::move(work)] {
    auto* window = QApplication::activeModalWidget();
    if (window == nullptr || window == below || !window->isVisible()) return;
    const auto* focus = QApplication::focusWidget();
    const bool has_keyboard = focus != nullptr && (focus == window || window->isAncestorOf(focus));
    if (!has_keyboard && std::chrono::steady_clock::now() < until) return;
    timer->stop();
    timer->deleteLater();
    work(*window);
  });
  timer->start();
}

/// Shows widgets in a window that has the keyboard.
class ShownWindow {
 public:
  explicit ShownWindow(QWidget& window) {
    window.show();
    window.activateWindow();
    WaitForKeyboard(window);
  }
};

}  // namespace tests
