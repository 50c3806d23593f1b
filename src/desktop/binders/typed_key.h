#pragma once

#include <optional>

#include "platform/controls/text_field.h"

class QKeyEvent;

namespace desktop {

/// The character a key press would put into a text; nothing for commands and keys that move.
std::optional<char32_t> TypedCharacter(const QKeyEvent& key);

/// The key as fields know it. Whatever this host pastes with (Ctrl+V as well) is Shift and Insert.
platform::Key PressedKey(const QKeyEvent& key);

}  // namespace desktop
