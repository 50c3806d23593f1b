#include "desktop/binders/disabled_reason.h"

#include <QEvent>

#include "desktop/look/qt_text.h"

namespace desktop {
namespace {

class DisabledReason : public QObject {
 public:
  DisabledReason(const platform::Control& control, QWidget& widget)
      : QObject(&widget), control_(control), widget_(widget) {
    widget.installEventFilter(this);
  }

 protected:
  // The widget shows its tool tip as it is afterwards. (A frame that is disabled disables what stands in it.)
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() != QEvent::ToolTip) return false;
    const bool asked = !widget_.isEnabled() && control_.why_disabled;
    widget_.setToolTip(asked ? desktop::ToQt(control_.why_disabled()) : QString());
    return false;
  }

 private:
  const platform::Control& control_;
  QWidget& widget_;
};

}  // namespace

void ShowWhyDisabled(const platform::Control& control, QWidget& widget) {
  new DisabledReason(control, widget);
}

}  // namespace desktop
