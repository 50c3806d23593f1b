#pragma once

#include "platform/parties/services.h"
#include "workspace/letters/letter_forms.h"

namespace workspace {

/// Shows the letter information form with the letter in it, and returns when the user has closed it.
void ShowLetterInformation(const platform::Services& services, const LetterInformation& letter);

}  // namespace workspace
