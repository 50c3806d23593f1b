#pragma once

#include <string>
#include <string_view>

namespace wordprocessor {

/// Appends `text` with what XML reserves escaped: for texts, and with `quotes` for attribute values.
void AppendEscaped(std::string& out, std::string_view text, bool quotes = false);
/// The text behind escaped character data.
std::string Unescaped(std::string_view markup);

}  // namespace wordprocessor
