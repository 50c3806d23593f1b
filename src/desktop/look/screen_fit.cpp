#include "desktop/look/screen_fit.h"

#include <algorithm>
#include <chrono>

#include <QEvent>
#include <QScreen>
#include <QTimer>

namespace desktop {
namespace {

using namespace std::chrono_literals;

// Nobody knows a window's frame before it is shown.
constexpr QSize kFrame(12, 44);
constexpr QSize kRestOfDialog(48, 200);

void MoveOntoScreen(QWidget& window) {
  if (!window.isVisible() || window.isMaximized() || window.isFullScreen()) return;
  const auto screen = window.screen()->availableGeometry();
  auto frame = window.frameGeometry();
  const auto too_large = (frame.size() - screen.size()).expandedTo({0, 0});
  if (!too_large.isNull()) window.resize(window.size() - too_large);
  frame = window.frameGeometry();
  const auto inside = [](int from, int length, int first, int room) {
    return std::max(first, std::min(from, first + room - length));
  };
  const QPoint place(inside(frame.x(), frame.width(), screen.x(), screen.width()),
                     inside(frame.y(), frame.height(), screen.y(), screen.height()));
  if (place != frame.topLeft()) window.move(place);
}

class ScreenKeeper : public QObject {
 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Show) {
      auto* window = static_cast<QWidget*>(watched);
      MoveOntoScreen(*window);
      // The frame comes a moment later; on a machine that is busy laying out, a long one.
      for (const auto wait : {50ms, 300ms, 1000ms, 2500ms})
        QTimer::singleShot(wait, window, [window] { MoveOntoScreen(*window); });
    }
    return false;
  }
};

}  // namespace

QSize RoomOnScreen(const QWidget& window) {
  return window.screen()->availableSize() - kFrame;
}

QSize SmallestOnScreen(const QWidget& part, QSize usual) {
  return usual.boundedTo((RoomOnScreen(part) - kRestOfDialog).expandedTo(kRestOfDialog));
}

void FitToScreen(QWidget& window, QSize usual) {
  window.resize(usual.boundedTo(RoomOnScreen(window)));
  KeepOnScreen(window);
}

void KeepOnScreen(QWidget& window) {
  window.installEventFilter(new ScreenKeeper(&window));
}

}  // namespace desktop
