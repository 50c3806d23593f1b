#pragma once

#include <QLineEdit>

#include "platform/controls/number_field.h"
#include "platform/controls/text_field.h"

namespace desktop {

/// The field is told of keys and of the mouse. Typed characters go through the field's key filter (a refused
/// one beeps) and up to its maximum length. A text that is pasted, by keys, menu or mouse, is one line
/// (PastedLine) and goes through the field's paste filter; what is too long of it is cut.
void Bind(platform::TextField& field, QLineEdit& edit);
/// The same, and the field is told when it is left.
void Bind(platform::NumberField& field, QLineEdit& edit);

}  // namespace desktop
