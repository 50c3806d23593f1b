#pragma once

#include <string>
#include <string_view>

#include "platform/parties/utilities.h"

namespace reference {

/// Judges a form number as it was typed, "1234567" or "1234567-7". Without a form type the number is good
/// when it is one of any type. The text of a refusal is a clause without a full stop.
platform::Utilities::FormNumberVerdict JudgeFormNumber(std::string_view form_type,
                                                       std::string_view form_number);

/// Whether a field that holds `text` takes a typed character: digits, one dash, and after it the "X". None
/// for a form type that there is not.
bool AllowsFormNumberKey(std::string_view form_type, char32_t key, std::string_view text);

}  // namespace reference
