#pragma once

#include <QLineEdit>

#include "platform/controls/text_field.h"

namespace desktop {

/// The field is told of keys and of the mouse. Typed characters go through the field's key filter (a refused
/// one beeps) and up to its maximum length; of a text that is pasted, what is too long is cut.
void Bind(platform::TextField& field, QLineEdit& edit);

}  // namespace desktop
