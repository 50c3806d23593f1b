#include "desktop/shell/busy_guard.h"

#include <utility>

#include <QAbstractSpinBox>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
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

/// What changes a field besides keys and clicks.
bool IsEditing(QEvent::Type type) {
  return type == QEvent::InputMethod || type == QEvent::DragEnter || type == QEvent::Drop ||
         type == QEvent::ContextMenu || type == QEvent::Wheel;
}

/// A field, or a part of one: its text, its list, its calendar.
bool IsField(const QWidget& widget) {
  for (const auto* part = &widget; part != nullptr; part = part->parentWidget()) {
    if (dynamic_cast<const QLineEdit*>(part) != nullptr || dynamic_cast<const QComboBox*>(part) != nullptr ||
        dynamic_cast<const QAbstractSpinBox*>(part) != nullptr ||
        dynamic_cast<const QCheckBox*>(part) != nullptr)
      return true;
  }
  return false;
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

/// Keys that go to the next field, or close what is open over one.
bool ChangesNothing(const QEvent& event) {
  if (event.type() != QEvent::KeyPress) return false;
  const int key = static_cast<const QKeyEvent&>(event).key();
  return key == Qt::Key_Tab || key == Qt::Key_Backtab || key == Qt::Key_Escape;
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
  const auto* window = widget.window();
  while (window->windowType() == Qt::Popup && window->parentWidget() != nullptr) {
    window = window->parentWidget()->window();
  }
  return window == &document_window_;
}

bool BusyGuard::eventFilter(QObject* receiver, QEvent* event) {
  const bool is_input = IsInput(event->type());
  if ((!is_input && !IsEditing(event->type())) || !busy() || ChangesNothing(*event)) return false;
  const auto* widget = dynamic_cast<QWidget*>(receiver);
  if (widget == nullptr || !IsInDocument(*widget)) return false;
  return (IsField(*widget) && !IsInFindBar(*widget)) ||
         (is_input && (SendsRequests(*widget) || MayPressButton(*widget, *event)));
}

}  // namespace desktop
