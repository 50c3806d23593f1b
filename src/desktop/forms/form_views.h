#pragma once

#include "desktop/shell/qt_host_shell.h"

namespace desktop {

/// Tells the shell which view shows which form.
void RegisterFormViews(QtHostShell& shell);

}  // namespace desktop
