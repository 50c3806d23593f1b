#include "desktop/binders/text_box_binding.h"

#include <QEvent>

#include "desktop/binders/binding.h"
#include "desktop/look/qt_text.h"

namespace desktop {
namespace {

class TextBoxBinding : public Binding {
 public:
  TextBoxBinding(platform::TextBox& box, QPlainTextEdit& edit) : Binding(box, edit), box_(box), edit_(edit) {
    edit_.setTabChangesFocus(true);
    edit_.installEventFilter(this);
    ShowText();
    ShowReadOnly();
    connect(&edit_, &QPlainTextEdit::textChanged, this, [this] { TakeText(); });
    Keep(box_.Changed.Connect([this] { ShowText(); }));
    Keep(box_.LookChanged.Connect([this] { ShowReadOnly(); }));
  }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::FocusOut) box_.UserLeaves();
    return false;
  }

 private:
  QString BoxText() const { return ToQt(platform::ReplaceAll(box_.text(), platform::kLineBreak, "\n")); }
  void ShowText() {
    const auto text = BoxText();
    if (edit_.toPlainText() != text) edit_.setPlainText(text);
  }
  void TakeText() {
    if (edit_.toPlainText() != BoxText()) box_.UserEdits(FromQt(edit_.toPlainText()));
  }
  /// It still can be read with the keyboard.
  void ShowReadOnly() {
    edit_.setReadOnly(box_.read_only());
    edit_.setTextInteractionFlags(box_.read_only() ? Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard
                                                   : Qt::TextEditorInteraction);
  }

  platform::TextBox& box_;
  QPlainTextEdit& edit_;
};

}  // namespace

void Bind(platform::TextBox& box, QPlainTextEdit& edit) {
  new TextBoxBinding(box, edit);
}

}  // namespace desktop
