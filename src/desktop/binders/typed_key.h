#pragma once

#include <optional>

class QKeyEvent;

namespace desktop {

/// The character a key press would put into a text; nothing for commands and keys that move.
std::optional<char32_t> TypedCharacter(const QKeyEvent& key);

}  // namespace desktop
