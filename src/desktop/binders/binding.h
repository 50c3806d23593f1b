#pragma once

#include <utility>
#include <vector>

#include <QObject>
#include <QWidget>

#include "platform/controls/control.h"
#include "platform/event.h"

namespace desktop {

/// Keeps one widget and one control alike. Owned by the widget; the control outlives the widget.
///
/// Neither side echoes: each takes only a value that differs from its own.
class Binding : public QObject {
 public:
  /// Shows what every control has: whether it can be used, is seen, and is marked as wrong.
  Binding(platform::Control& control, QWidget& widget);

 protected:
  void Keep(platform::Connection connection) { connections_.push_back(std::move(connection)); }

 private:
  void ShowLook();

  platform::Control& control_;
  QWidget& widget_;
  std::vector<platform::Connection> connections_;
};

}  // namespace desktop
