#pragma once

#include <QPlainTextEdit>

#include "platform/controls/text_box.h"

namespace desktop {

/// The box is told what the user writes, and when the keyboard goes elsewhere. Tab leaves the box.
void Bind(platform::TextBox& box, QPlainTextEdit& edit);

}  // namespace desktop
