#pragma once

#include <functional>

#include <QFrame>

namespace desktop {

/// A sentence across the window, with a button that takes it away.
class NoticeBar : public QFrame {
 public:
  NoticeBar(const QString& text, std::function<void()> dismissed, QWidget* parent);
};

/// A window that can say something above what it shows.
class NoticePlace {
 public:
  virtual ~NoticePlace() = default;
  /// Until the user dismisses it, or another one takes its place.
  virtual void ShowNotice(const QString& text) = 0;
};

}  // namespace desktop
