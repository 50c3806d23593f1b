#pragma once

#include <QGridLayout>

#include "workspace/pages/letter_page.h"

namespace desktop {

/// The fields that say which letter: its type, and the document it is about. Fills three rows of `layout`.
void AddLetterFields(workspace::LetterPage& page, QGridLayout& layout);

}  // namespace desktop
