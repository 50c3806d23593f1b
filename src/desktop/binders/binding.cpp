#include "desktop/binders/binding.h"

#include "desktop/binders/invalid_mark.h"
#include "desktop/look/qt_text.h"

namespace desktop {

Binding::Binding(platform::Control& control, QWidget& widget)
    : QObject(&widget), control_(control), widget_(widget) {
  Keep(control_.LookChanged.Connect([this] { ShowLook(); }));
  ShowLook();
}

void Binding::ShowLook() {
  widget_.setEnabled(control_.enabled());
  // Only what differs: showing a widget that has no parent yet would open a window.
  const bool taken_off = widget_.isHidden() && widget_.testAttribute(Qt::WA_WState_ExplicitShowHide);
  if (control_.visible() == taken_off) widget_.setVisible(control_.visible());
  InvalidMark::Show(widget_, control_.marked_invalid(), ToQt(control_.invalid_reason()));
}

}  // namespace desktop
