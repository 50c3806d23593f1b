#include "desktop/binders/text_field_binding.h"

#include <algorithm>
#include <optional>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QValidator>

#include "desktop/binders/binding.h"
#include "desktop/binders/typed_key.h"
#include "desktop/look/qt_text.h"
#include "platform/controls/typed_text.h"

namespace desktop {
namespace {

qsizetype Characters(const QString& text) {
  return text.toUcs4().size();
}

/// Cuts what the user put in beyond the maximum length. (A line edit's own maximum would cut what code sets.)
class LengthLimit : public QValidator {
 public:
  LengthLimit(const platform::TextField& field, QObject* parent) : QValidator(parent), field_(field) {}

  State validate(QString& text, int& position) const override {
    const auto limit = std::max(static_cast<qsizetype>(field_.max_length), Characters(ToQt(field_.text())));
    for (auto excess = Characters(text) - limit; field_.max_length > 0 && excess > 0 && position > 0;
         --excess) {
      const int width = text.at(position - 1).isLowSurrogate() && position > 1 ? 2 : 1;
      position -= width;
      text.remove(position, width);
    }
    return Acceptable;
  }

 private:
  const platform::TextField& field_;
};

class TextFieldBinding : public Binding {
 public:
  TextFieldBinding(platform::TextField& field, QLineEdit& edit)
      : Binding(field, edit), field_(field), edit_(edit) {
    edit_.setText(ToQt(field_.text()));
    edit_.setReadOnly(field_.read_only);
    edit_.setValidator(new LengthLimit(field_, this));
    edit_.installEventFilter(this);
    connect(&edit_, &QLineEdit::textChanged, this,
            [this](const QString& text) { field_.SetText(FromQt(text)); });
    Keep(field_.Changed.Connect([this] { ShowText(); }));
  }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    switch (event->type()) {
      case QEvent::KeyPress:
        return PressKey(*static_cast<QKeyEvent*>(event));
      case QEvent::KeyRelease:
        field_.KeyUp(PressedKey(*static_cast<QKeyEvent*>(event)));
        return false;
      case QEvent::InputMethod:
        FilterComposed(*static_cast<QInputMethodEvent*>(event));
        return false;
      case QEvent::MouseButtonPress:
        field_.MouseDown();
        return false;
      case QEvent::Drop:
        field_.MouseDown();
        ReleaseMouseAfterwards();
        return TakeDrop(*static_cast<QDropEvent*>(event));
      case QEvent::MouseButtonRelease:
        ReleaseMouseAfterwards();
        return PasteSelection(*static_cast<QMouseEvent*>(event));
      case QEvent::ContextMenu:
        ShowMenu(static_cast<QContextMenuEvent*>(event)->globalPos());
        return true;
      default:
        return false;
    }
  }

 private:
  void ShowText() {
    const auto text = ToQt(field_.text());
    if (edit_.text() != text) edit_.setText(text);
  }

  /// Whether the key goes no further.
  bool PressKey(const QKeyEvent& event) {
    field_.KeyDown(PressedKey(event));
    if (event.matches(QKeySequence::Paste)) return Paste(QApplication::clipboard()->text());
    const auto typed = TypedCharacter(event);
    if (!typed || !field_.key_filter || edit_.isReadOnly()) return false;
    if (const auto taken = Filter(*typed)) edit_.insert(QString::fromUcs4(&*taken, 1));
    return true;
  }

  std::optional<char32_t> Filter(char32_t key) {
    const auto taken = field_.key_filter(key);
    if (!taken) QApplication::beep();
    return taken;
  }

  /// What an input method puts in is typed as well.
  void FilterComposed(QInputMethodEvent& event) {
    if (!field_.key_filter || event.commitString().isEmpty()) return;
    QString taken;
    for (const char32_t key : event.commitString().toUcs4()) {
      if (const auto character = Filter(key)) taken += QString::fromUcs4(&*character, 1);
    }
    event.setCommitString(taken, event.replacementStart(), event.replacementLength());
  }

  /// Whether the text goes in here, and no further.
  bool Paste(const QString& text) {
    if (edit_.isReadOnly() || !edit_.isEnabled()) return false;
    const auto line = platform::PastedLine(FromQt(text));
    if (field_.paste_filter && !field_.paste_filter(line)) {
      QApplication::beep();
    } else if (!line.empty()) {
      edit_.insert(ToQt(line));
    }
    return true;
  }

  /// A text of the field itself is only moved.
  bool TakeDrop(QDropEvent& drop) {
    if (drop.source() == &edit_ || !drop.mimeData()->hasText()) return false;
    edit_.setCursorPosition(edit_.cursorPositionAt(drop.position().toPoint()));
    if (!Paste(drop.mimeData()->text())) return false;
    drop.acceptProposedAction();
    return true;
  }

  /// What is marked somewhere goes in with the middle button, where the host has that.
  bool PasteSelection(const QMouseEvent& release) {
    auto* clipboard = QApplication::clipboard();
    if (release.button() != Qt::MiddleButton || !clipboard->supportsSelection()) return false;
    edit_.setCursorPosition(edit_.cursorPositionAt(release.position().toPoint()));
    return Paste(clipboard->text(QClipboard::Selection));
  }

  /// The edit has yet to act on the release (the middle button pastes) or on the drop.
  void ReleaseMouseAfterwards() {
    QMetaObject::invokeMethod(
        this, [this] { field_.MouseUp(); }, Qt::QueuedConnection);
  }

  /// The edit's own menu. Of its choices only the pasting is told: the others bring nothing in.
  void ShowMenu(const QPoint& place) {
    field_.MouseUp();  // the menu has the mouse from here on
    auto* menu = edit_.createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto paste_keys = QKeySequence(QKeySequence::Paste).toString(QKeySequence::NativeText);
    for (auto* action : menu->actions()) {
      if (!action->text().endsWith(QLatin1Char('\t') + paste_keys)) continue;
      action->disconnect(&edit_);
      connect(action, &QAction::triggered, this, [this] { PasteByMouse(); });
    }
    menu->popup(place);
  }

  void PasteByMouse() {
    field_.MouseDown();
    Paste(QApplication::clipboard()->text());
    field_.MouseUp();
  }

  platform::TextField& field_;
  QLineEdit& edit_;
};

/// Tells the field when it is left.
class LeavingTeller : public QObject {
 public:
  LeavingTeller(platform::NumberField& field, QLineEdit& edit) : QObject(&edit), field_(field) {
    edit.installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::FocusOut) field_.UserLeaves();
    return false;
  }

 private:
  platform::NumberField& field_;
};

}  // namespace

void Bind(platform::TextField& field, QLineEdit& edit) {
  new TextFieldBinding(field, edit);
}

void Bind(platform::NumberField& field, QLineEdit& edit) {
  new TextFieldBinding(field, edit);
  new LeavingTeller(field, edit);
}

}  // namespace desktop
