#include "desktop/busy_guard.h"

#include <utility>

#include <QApplication>
#include <QKeyEvent>
#include <QPushButton>

#include "desktop/binders/grid_find_bar.h"
#include "desktop/binders/grid_view.h"
#include "desktop/binders/option_binding.h"

namespace desktop {
namespace {

bool IsInput(QEvent::Type type) {
  return type == QEvent::MouseButtonPress || type == QEvent::MouseButtonRelease ||
         type == QEvent::MouseButtonDblClick || type == QEvent::KeyPress || type == QEvent::Shortcut;
}

bool SendsRequests(const QWidget& widget) {
  return dynamic_cast<const QPushButton*>(&widget) != nullptr ||
         dynamic_cast<const OptionRadio*>(&widget) != nullptr ||
         dynamic_cast<const GridView*>(&widget) != nullptr ||
         dynamic_cast<const GridView*>(widget.parentWidget()) != nullptr;  // its viewport
}

bool IsInFindBar(const QWidget& widget) {
  return dynamic_cast<const GridFindBar*>(&widget) != nullptr ||
         dynamic_cast<const GridFindBar*>(widget.parentWidget()) != nullptr;
}

/// Enter in a field may press the page's button.
bool MayPressButton(const QWidget& widget, const QEvent& event) {
  if (event.type() != QEvent::KeyPress || IsInFindBar(widget)) return false;
  const int key = static_cast<const QKeyEvent&>(event).key();
  return key == Qt::Key_Return || key == Qt::Key_Enter;
}

bool MovesFocus(const QEvent& event) {
  if (event.type() != QEvent::KeyPress) return false;
  const int key = static_cast<const QKeyEvent&>(event).key();
  return key == Qt::Key_Tab || key == Qt::Key_Backtab;
}

}  // namespace

BusyGuard::BusyGuard(QWidget& document_window) : document_window_(document_window) {
  qApp->installEventFilter(this);
}

void BusyGuard::SetBusy(bool busy) {
  const bool was_busy = std::exchange(busy_, busy);
  if (was_busy && !this->busy()) Idle();
}

bool BusyGuard::IsInDocument(const QWidget& widget) const {
  return widget.window() == &document_window_;
}

bool BusyGuard::eventFilter(QObject* receiver, QEvent* event) {
  if (!busy() || !IsInput(event->type()) || MovesFocus(*event)) return false;
  const auto* widget = dynamic_cast<QWidget*>(receiver);
  if (widget == nullptr || !IsInDocument(*widget)) return false;
  return SendsRequests(*widget) || MayPressButton(*widget, *event);
}

}  // namespace desktop
