#pragma once

#include <array>
#include <cstddef>
#include <string_view>

/// Which characters and names XML 1.0 (fifth edition) takes, in UTF-8.
namespace platform {

/// White space of markup, 2.3.
inline constexpr std::string_view kXmlSpace = " \t\r\n";

/// Whether a character may stand in a document, 2.2: no control character but tab, line feed and carriage
/// return, no surrogate, not U+FFFE and U+FFFF.
bool IsXmlCharacter(char32_t character);

/// How many bytes of `text`, from its start, are well-formed UTF-8 of characters that may stand in a
/// document.
std::size_t XmlCharactersLength(std::string_view text);

/// Length in bytes of the Name (2.3) at the start of `text`, which is valid UTF-8; 0 where there is none.
std::size_t XmlNameLength(std::string_view text);

/// A set of ASCII characters to look for byte by byte.
class ByteSet {
 public:
  constexpr explicit ByteSet(std::string_view bytes) {
    for (const char byte : bytes) holds_[static_cast<unsigned char>(byte)] = true;
  }
  constexpr bool Holds(char byte) const { return holds_[static_cast<unsigned char>(byte)]; }
  /// The first place at or after `from` with a byte of the set; the text's size where there is none.
  std::size_t FindIn(std::string_view text, std::size_t from) const {
    while (from < text.size() && !Holds(text[from])) ++from;
    return from;
  }

 private:
  std::array<bool, 256> holds_{};
};

}  // namespace platform
