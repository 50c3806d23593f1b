#include "desktop/binders/text_field_binding.h"

#include <algorithm>
#include <optional>

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QValidator>

#include "desktop/binders/binding.h"
#include "desktop/binders/typed_key.h"
#include "desktop/look/qt_text.h"

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
      case QEvent::Drop:
        field_.MouseDown();
        if (event->type() == QEvent::Drop) ReleaseMouseAfterwards();
        return false;
      case QEvent::MouseButtonRelease:
        ReleaseMouseAfterwards();
        return false;
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
    edit_.paste();
    field_.MouseUp();
  }

  platform::TextField& field_;
  QLineEdit& edit_;
};

}  // namespace

void Bind(platform::TextField& field, QLineEdit& edit) {
  new TextFieldBinding(field, edit);
}

}  // namespace desktop
