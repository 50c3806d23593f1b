#pragma once

#include <set>
#include <string>
#include <vector>

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QTabBar>
#include <QTableView>

#include "desktop/shell/notice_bar.h"

/// A window as a person meets it: what can be read of it, and what is read out.
namespace tests {

inline std::string Describe(const QWidget& widget) {
  std::string text;
  if (const auto* label = dynamic_cast<const QLabel*>(&widget)) text = label->text().toStdString();
  if (const auto* button = dynamic_cast<const QAbstractButton*>(&widget)) text = button->text().toStdString();
  return std::string(widget.metaObject()->className()) + " \"" + text + "\" (" +
         widget.accessibleName().toStdString() + ")";
}

/// What of a widget must be seen whole; an empty size where it may be cut.
inline QSize NeededSize(const QWidget& widget) {
  if (const auto* label = dynamic_cast<const QLabel*>(&widget)) {
    if (label->text().isEmpty()) return {};
    return label->wordWrap() ? QSize(0, label->heightForWidth(label->width())) : label->sizeHint();
  }
  if (const auto* button = dynamic_cast<const QAbstractButton*>(&widget)) {
    return button->text().isEmpty() ? QSize() : button->minimumSizeHint();
  }
  if (dynamic_cast<const QTabBar*>(&widget) != nullptr) return widget.sizeHint();
  if (dynamic_cast<const QAbstractSpinBox*>(&widget) != nullptr) return widget.minimumSizeHint();
  if (dynamic_cast<const QComboBox*>(&widget) != nullptr) return {0, widget.minimumSizeHint().height()};
  if (dynamic_cast<const QLineEdit*>(&widget) != nullptr) return {0, widget.minimumSizeHint().height()};
  if (dynamic_cast<const QGroupBox*>(&widget) != nullptr) return widget.minimumSizeHint();
  return {};
}

/// Labels, buttons and fields too small for their text, or not wholly inside the window.
inline std::vector<std::string> CutOffIn(QWidget& window) {
  std::vector<std::string> cut;
  for (const auto* widget : window.findChildren<QWidget*>()) {
    const auto needed = NeededSize(*widget);
    if (!widget->isVisible() || needed.isEmpty()) continue;
    const bool small = widget->width() < needed.width() || widget->height() < needed.height();
    const bool hidden = widget->visibleRegion().boundingRect() != widget->rect();
    if (small || hidden) cut.push_back(Describe(*widget) + (small ? " is too small" : " is hidden in part"));
  }
  for (auto* table : window.findChildren<QTableView*>()) {
    for (int column = 0; table->isVisible() && column < table->model()->columnCount(); ++column) {
      const auto heading = table->model()->headerData(column, Qt::Horizontal).toString();
      const int wide = table->horizontalHeader()->fontMetrics().horizontalAdvance(heading);
      if (!table->isColumnHidden(column) && table->columnWidth(column) < wide)
        cut.push_back("heading " + heading.toStdString());
    }
  }
  return cut;
}

inline bool IsWorked(const QAccessibleInterface& part) {
  static const std::set<QAccessible::Role> kRoles = {
      QAccessible::Button,   QAccessible::RadioButton, QAccessible::CheckBox, QAccessible::EditableText,
      QAccessible::ComboBox, QAccessible::SpinBox,     QAccessible::Table,    QAccessible::PageTab,
      QAccessible::List,     QAccessible::Dialog,      QAccessible::Window};
  const bool is_frame = qobject_cast<QGroupBox*>(part.object()) != nullptr;
  return (kRoles.contains(part.role()) || is_frame) && !part.state().invisible;
}

/// What can be worked, or holds what can be, and has no name to be read out under. Walks what a screen reader
/// walks, not the widgets.
inline void CollectNameless(QAccessibleInterface& part, std::vector<std::string>& nameless) {
  const auto name = part.text(QAccessible::Name);
  // An ampersand between blanks is a word; any other one is the mark of a mnemonic.
  const bool bad =
      name.trimmed().isEmpty() || QString(name).remove(QLatin1String(" & ")).contains(QLatin1Char('&'));
  const auto* widget = qobject_cast<QWidget*>(part.object());
  const bool drawn = widget == nullptr || widget->isVisible();
  if (IsWorked(part) && drawn && bad) {
    const auto parent = part.parent() == nullptr ? QString() : part.parent()->text(QAccessible::Name);
    nameless.push_back((part.object() == nullptr ? "?" : part.object()->metaObject()->className()) +
                       std::string(" role ") + std::to_string(part.role()) + " in " + parent.toStdString());
  }
  if (part.role() == QAccessible::Table) return;  // its cells are read by their text
  for (int child = 0; child < part.childCount(); ++child) {
    if (auto* inner = part.child(child)) CollectNameless(*inner, nameless);
  }
}

inline std::vector<std::string> NamelessIn(QWidget& window) {
  std::vector<std::string> nameless;
  if (auto* whole = QAccessible::queryAccessibleInterface(&window)) CollectNameless(*whole, nameless);
  return nameless;
}

/// The sentences that stand above what the window shows.
inline std::vector<std::string> NoticesIn(const QWidget& window) {
  std::vector<std::string> notices;
  for (const auto* frame : window.findChildren<QFrame*>()) {
    if (dynamic_cast<const desktop::NoticeBar*>(frame) == nullptr || !frame->isVisibleTo(&window)) continue;
    notices.push_back(frame->findChild<QLabel*>()->text().toStdString());
  }
  return notices;
}

}  // namespace tests
