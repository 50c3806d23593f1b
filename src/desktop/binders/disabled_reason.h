#pragma once

#include <QWidget>

#include "platform/controls/control.h"

namespace desktop {

/// The tool tip of a widget that cannot be used says why, as its control knows it at that moment. The control
/// outlives the widget.
void ShowWhyDisabled(const platform::Control& control, QWidget& widget);

}  // namespace desktop
