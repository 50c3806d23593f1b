#include "desktop/binders/typed_key.h"

#include <QKeyEvent>

namespace desktop {

std::optional<char32_t> TypedCharacter(const QKeyEvent& key) {
  // Ctrl and Alt together are AltGr on some keyboards, which types characters.
  const auto modifiers = key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
  if (modifiers != Qt::NoModifier && modifiers != (Qt::ControlModifier | Qt::AltModifier)) return {};
  const auto characters = key.text().toUcs4();
  if (characters.size() != 1) return {};
  const char32_t character = characters.first();
  return QChar::isPrint(character) ? std::optional(character) : std::nullopt;
}

platform::Key PressedKey(const QKeyEvent& key) {
  if (key.matches(QKeySequence::Paste)) return platform::Key::Paste();
  constexpr int kInsert = platform::Key::Paste().code;
  // The host's codes of letters, digits and the blank are those of the characters.
  const bool is_character = key.key() >= Qt::Key_Space && key.key() <= Qt::Key_Z;
  const auto modifiers = key.modifiers();
  return {.code = key.key() == Qt::Key_Insert ? kInsert
                  : is_character              ? key.key()
                                              : 0,
          .shift = modifiers.testFlag(Qt::ShiftModifier),
          .control = modifiers.testFlag(Qt::ControlModifier),
          .alt = modifiers.testFlag(Qt::AltModifier)};
}

}  // namespace desktop
