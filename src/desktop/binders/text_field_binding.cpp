#include "desktop/binders/text_field_binding.h"

#include <algorithm>

#include <QApplication>
#include <QKeyEvent>
#include <QValidator>

#include "desktop/binders/binding.h"
#include "desktop/binders/typed_key.h"
#include "desktop/qt_text.h"

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
    if (event->type() != QEvent::KeyPress || !field_.key_filter || edit_.isReadOnly()) return false;
    const auto key = TypedCharacter(*static_cast<QKeyEvent*>(event));
    if (!key) return false;
    const auto taken = field_.key_filter(*key);
    if (!taken) {
      QApplication::beep();
    } else {
      edit_.insert(QString::fromUcs4(&*taken, 1));
    }
    return true;
  }

 private:
  void ShowText() {
    const auto text = ToQt(field_.text());
    if (edit_.text() != text) edit_.setText(text);
  }

  platform::TextField& field_;
  QLineEdit& edit_;
};

}  // namespace

void Bind(platform::TextField& field, QLineEdit& edit) {
  new TextFieldBinding(field, edit);
}

}  // namespace desktop
