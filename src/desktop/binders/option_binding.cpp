#include "desktop/binders/option_binding.h"

#include <QKeyEvent>

#include "desktop/binders/binding.h"
#include "desktop/binders/disabled_reason.h"
#include "desktop/look/qt_text.h"

namespace desktop {
namespace {

/// How far an arrow key goes among the options; 0 for other keys.
int StepOf(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Down:
    case Qt::Key_Right:
      return 1;
    case Qt::Key_Up:
    case Qt::Key_Left:
      return -1;
    default:
      return 0;
  }
}

class OptionBinding : public Binding {
 public:
  OptionBinding(platform::OptionButton& option, OptionRadio& radio)
      : Binding(option, radio), option_(option), radio_(radio) {
    radio_.setText(ToQt(option_.caption()));
    radio_.setAccessibleName(WithoutMnemonic(option_.caption()));
    connect(&radio_, &QRadioButton::clicked, this, [this] {
      radio_.setFocus();
      option_.UserClicks();
    });
    Keep(option_.LookChanged.Connect([this] { radio_.setChecked(option_.selected()); }));
    radio_.setChecked(option_.selected());
    ShowWhyDisabled(option_, radio_);
  }

 private:
  platform::OptionButton& option_;
  OptionRadio& radio_;
};

}  // namespace

OptionRadio::OptionRadio(Arrows arrows, QWidget* parent) : QRadioButton(parent), arrows_(arrows) {
  setAutoExclusive(false);  // the control deselects the others, and may deselect all
}

void OptionRadio::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter) {
    click();
  } else if (const int step = StepOf(*event); step != 0) {
    MoveTo(Neighbour(step));
  } else {
    QRadioButton::keyPressEvent(event);
  }
}

void OptionRadio::MoveTo(OptionRadio* option) {
  if (option == nullptr) return;
  option->setFocus(Qt::TabFocusReason);
  if (arrows_ == Arrows::kChoose) option->click();
}

OptionRadio* OptionRadio::Neighbour(int step) const {
  QList<OptionRadio*> options;
  for (auto* child : parentWidget()->children()) {
    auto* option = dynamic_cast<OptionRadio*>(child);
    if (option != nullptr && (option == this || (option->isEnabled() && option->isVisible())))
      options += option;
  }
  const auto here = options.indexOf(const_cast<OptionRadio*>(this));
  const auto there = here + step;
  return there >= 0 && there < options.size() ? options[there] : nullptr;
}

void Bind(platform::OptionButton& option, OptionRadio& radio) {
  new OptionBinding(option, radio);
}

}  // namespace desktop
