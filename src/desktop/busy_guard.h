#pragma once

#include <functional>

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

  /// Whether a reply is awaited whatever the pointer looks like: a box or a notification may have made it
  /// normal. Null: the pointer tells all.
  std::function<bool()> awaits_reply;

  void SetBusy(bool busy);
  bool busy() const { return busy_ || (awaits_reply && awaits_reply()); }

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
