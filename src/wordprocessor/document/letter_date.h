#pragma once

#include <string>
#include <string_view>

namespace wordprocessor {

/// The field of a letter that holds its date.
inline constexpr std::string_view kLetterDateField = "LTR_DT";

/// The letter's date as a date field of a word processor would show it.
///
/// `picture` is the field's own ("MMMM d, yyyy", "'the' dd.MM.yy"; ECMA-376, part 1, 17.16.4.1). The date
/// comes out as it stands where the picture is empty or asks for the time of day, which a letter has none of,
/// or where `date` is no date ("October 1, 2024", "10/1/2024" or "2024-10-01").
std::string LetterDateIn(std::string_view picture, std::string_view date);

}  // namespace wordprocessor
