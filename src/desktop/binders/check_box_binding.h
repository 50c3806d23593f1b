#pragma once

#include <QCheckBox>

#include "platform/controls/check_box.h"

namespace desktop {

/// A letter of the caption that is `mnemonic` ticks it with Alt.
void Bind(platform::CheckBox& box, QCheckBox& shown, char mnemonic = '\0');

}  // namespace desktop
