#pragma once

class QWidget;

namespace desktop {

/// How to work the window, with the keyboard as well.
void ShowHelp(QWidget& parent);

}  // namespace desktop
