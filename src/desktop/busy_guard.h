#pragma once

#include <QObject>

#include "platform/event.h"

class QWidget;

namespace desktop {

/// While the workspace waits for a reply, keeps the user from commands of the document that would send
/// another request: buttons, options, the lists of results and Enter. Fields, pages and dialogs stay alive.
class BusyGuard : public QObject {
 public:
  /// `document_window` outlives the guard.
  explicit BusyGuard(QWidget& document_window);

  void SetBusy(bool busy);
  bool busy() const { return busy_; }

  /// There is nothing to wait for any more.
  platform::Event<> Idle;

 protected:
  bool eventFilter(QObject* receiver, QEvent* event) override;

 private:
  bool IsInDocument(const QWidget& widget) const;

  QWidget& document_window_;
  bool busy_ = false;
};

}  // namespace desktop
