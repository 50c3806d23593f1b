#pragma once

#include <string_view>

/// What the names of a letter's fields say, as elements of a data context and as bookmarks of a template.
namespace platform {

/// The paragraph that takes a text of the user's own.
inline constexpr std::string_view kFreeTextParagraph = "PARA_FREE_TEXT";

inline constexpr std::string_view kParagraphMark = "PARA_";

/// Whether the field is an optional paragraph of the letter: the mark stands anywhere in its name, in
/// capitals.
bool IsParagraphField(std::string_view name);

/// Whether a bookmark repeats a field that stands in the template already, as NAME__1 and NAME__2 repeat
/// NAME: what follows the last "__" is a number.
bool IsRepeat(std::string_view name);

/// The name of the field that a bookmark repeats; "" for one that repeats none.
std::string_view RepeatedName(std::string_view name);

}  // namespace platform
