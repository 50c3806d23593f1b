#pragma once

#include <string>
#include <string_view>

#include "platform/parties/utilities.h"

namespace reference {

/// The check digit of a form number of seven digits: "0" to "9" or "X". The digits are weighted 7, 6, 5, 4,
/// 3, 2, 1 from the left; the digit is the sum modulo 11, and "X" stands for ten. docs/form-numbers.md has
/// examples.
char CheckDigit(std::string_view seven_digits);

/// Judges a form number as it was typed, "1234567" or "1234567-7". Without a form type the number is good
/// when it is one of any type. The text of a refusal is a clause without a full stop.
platform::Utilities::FormNumberVerdict JudgeFormNumber(std::string_view form_type,
                                                       std::string_view form_number);

/// Whether a field that holds `text` takes a typed character: digits, one dash, and after it the "X". None
/// for a form type that there is not.
bool AllowsFormNumberKey(std::string_view form_type, char32_t key, std::string_view text);

}  // namespace reference
