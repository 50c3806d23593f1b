#include "desktop/binders/command_binding.h"

#include "desktop/binders/binding.h"
#include "desktop/binders/disabled_reason.h"
#include "desktop/look/qt_text.h"

namespace desktop {
namespace {

class CommandBinding : public Binding {
 public:
  CommandBinding(platform::Command& command, QPushButton& button, char mnemonic)
      : Binding(command, button), command_(command), button_(button), mnemonic_(mnemonic) {
    button_.setAutoDefault(true);
    connect(&button_, &QPushButton::clicked, this, [this] {
      button_.setFocus();
      command_.UserClicks();
    });
    Keep(command_.LookChanged.Connect([this] { ShowCaption(); }));
    ShowWhyDisabled(command_, button_);
    ShowCaption();
  }

 private:
  void ShowCaption() {
    auto caption = ToQt(command_.caption());
    const bool has_one = QString(caption).remove(QLatin1String("&&")).contains(QLatin1Char('&'));
    const auto place = has_one ? -1 : caption.indexOf(QLatin1Char(mnemonic_));
    if (place >= 0) caption.insert(place, QLatin1Char('&'));
    if (button_.text() == caption && !button_.accessibleName().isEmpty()) return;
    button_.setText(caption);
    button_.setAccessibleName(WithoutMnemonic(command_.caption()));
  }

  platform::Command& command_;
  QPushButton& button_;
  const char mnemonic_;
};

class LabelBinding : public Binding {
 public:
  LabelBinding(platform::Label& label, QLabel& shown, const QString& read_as)
      : Binding(label, shown), label_(label), shown_(shown), read_as_(read_as) {
    shown_.setTextFormat(Qt::PlainText);
    shown_.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    shown_.setFocusPolicy(Qt::ClickFocus);  // read with the mouse; no stop on the keyboard's way
    Keep(label_.LookChanged.Connect([this] { ShowText(); }));
    ShowText();
  }

 private:
  void ShowText() {
    const auto text = LabelText(label_.caption());
    shown_.setText(text);
    shown_.setAccessibleName(read_as_.isEmpty() ? text : read_as_ + QLatin1Char(' ') + text);
  }

  platform::Label& label_;
  QLabel& shown_;
  const QString read_as_;
};

class FrameBinding : public Binding {
 public:
  FrameBinding(platform::Frame& frame, QGroupBox& box) : Binding(frame, box), frame_(frame), box_(box) {
    Keep(frame_.LookChanged.Connect([this] { ShowCaption(); }));
    ShowCaption();
  }

 private:
  void ShowCaption() {
    box_.setTitle(ToQt(frame_.caption()));
    box_.setAccessibleName(WithoutMnemonic(frame_.caption()));
  }

  platform::Frame& frame_;
  QGroupBox& box_;
};

}  // namespace

void Bind(platform::Command& command, QPushButton& button, char mnemonic) {
  new CommandBinding(command, button, mnemonic);
}

void Bind(platform::Label& label, QLabel& shown, const QString& read_as) {
  new LabelBinding(label, shown, read_as);
}

void Bind(platform::Frame& frame, QGroupBox& box) {
  new FrameBinding(frame, box);
}

}  // namespace desktop
