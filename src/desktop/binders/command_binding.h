#pragma once

#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

#include "platform/controls/command.h"
#include "platform/controls/label.h"

namespace desktop {

/// Pressing the button leaves the field the user was in first, so that the field completes its value. The
/// tool tip of a disabled one says why. A letter of the caption that is `mnemonic` presses it with Alt, where
/// the caption itself marks none.
void Bind(platform::Command& command, QPushButton& button, char mnemonic = '\0');
/// The text can be selected and copied. `read_as` is its accessible name; the text itself where it is empty.
void Bind(platform::Label& label, QLabel& shown, const QString& read_as = {});
/// A disabled frame disables what stands in it without touching those controls' own state.
void Bind(platform::Frame& frame, QGroupBox& box);

}  // namespace desktop
