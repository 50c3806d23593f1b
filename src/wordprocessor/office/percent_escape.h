#pragma once

#include <string>
#include <string_view>

namespace wordprocessor {

inline constexpr std::string_view kHexDigits = "0123456789ABCDEF";

/// Appends a byte as "%" and two capital hexadecimal digits.
inline void AppendEscaped(std::string& text, char byte) {
  const auto number = static_cast<unsigned char>(byte);
  text += {'%', kHexDigits[number >> 4], kHexDigits[number & 0x0F]};
}

}  // namespace wordprocessor
