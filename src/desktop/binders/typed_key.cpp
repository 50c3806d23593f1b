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

}  // namespace desktop
