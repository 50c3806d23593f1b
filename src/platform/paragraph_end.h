#pragma once

#include <string_view>

namespace platform {

/// What ends a paragraph in the text of a letter's field. Only the free text and the data may hold it: the
/// values that a user enters stand on one line.
inline constexpr std::string_view kParagraphEnd = "||";

}  // namespace platform
