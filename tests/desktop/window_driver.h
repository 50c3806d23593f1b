#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <vector>

#include <QApplication>
#include <QElapsedTimer>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <QWidget>

namespace tests {

/// Lets the window do what is waiting.
inline void Settle() {
  for (int turn = 0; turn < 5; ++turn) QApplication::processEvents();
}

/// Waits until `done` holds; false when it does not within five seconds.
inline bool WaitFor(const std::function<bool()>& done) {
  QElapsedTimer waited;
  waited.start();
  while (!done() && waited.elapsed() < 5000) QApplication::processEvents(QEventLoop::AllEvents, 10);
  return done();
}

/// Runs `work` on the modal window that comes up next: a box whose event loop the test is inside.
inline void OnNextModal(std::function<void(QWidget& window)> work) {
  auto* timer = new QTimer(qApp);
  timer->setInterval(1);
  QObject::connect(timer, &QTimer::timeout, timer, [timer, work = std::move(work)] {
    auto* window = QApplication::activeModalWidget();
    if (window == nullptr || !window->isVisible()) return;
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
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
  }
};

}  // namespace tests
