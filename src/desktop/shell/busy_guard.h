#pragma once

#include <functional>

#include <QObject>

#include "platform/event.h"

class QWidget;

namespace desktop {

/// While the workspace waits for a reply, keeps the user from what would send another request, or change what
/// the reply is about: buttons, options, fields, the lists of results and Enter, by mouse and keyboard. Tab
/// and Esc, pages, toolbar and dialogs, a run's "Cancel" among them, stay alive.
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
