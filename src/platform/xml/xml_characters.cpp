#include "platform/xml/xml_characters.h"

#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>

#include "platform/text.h"

namespace platform {
namespace {

struct Range {
  char32_t from, to;
};

// 2.3, productions 4 and 4a, without the ASCII part.
constexpr auto kNameStart = std::to_array<Range>({
    {0xC0, 0xD6},
    {0xD8, 0xF6},
    {0xF8, 0x2FF},
    {0x370, 0x37D},
    {0x37F, 0x1FFF},
    {0x200C, 0x200D},
    {0x2070, 0x218F},
    {0x2C00, 0x2FEF},
    {0x3001, 0xD7FF},
    {0xF900, 0xFDCF},
    {0xFDF0, 0xFFFD},
    {0x10000, 0xEFFFF},
});
constexpr auto kNameFurther = std::to_array<Range>({{0xB7, 0xB7}, {0x300, 0x36F}, {0x203F, 0x2040}});

constexpr ByteSet kAsciiNameStart("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz:_");
constexpr ByteSet kAsciiNameFurther("0123456789-.");

template <std::size_t Count>
bool IsIn(const std::array<Range, Count>& ranges, char32_t character) {
  return std::ranges::any_of(
      ranges, [character](const Range& range) { return character >= range.from && character <= range.to; });
}

bool IsNameCharacter(char32_t character, bool first) {
  if (character < 0x80) {
    const auto byte = static_cast<char>(character);
    return kAsciiNameStart.Holds(byte) || (!first && kAsciiNameFurther.Holds(byte));
  }
  return IsIn(kNameStart, character) || (!first && IsIn(kNameFurther, character));
}

bool IsControl(char byte) {
  return static_cast<unsigned char>(byte) < 0x20 && byte != '\t' && byte != '\n' && byte != '\r';
}

}  // namespace

bool IsXmlCharacter(char32_t character) {
  if (character < 0x20) return !IsControl(static_cast<char>(character));
  return character < 0xD800 || (character > 0xDFFF && character < 0xFFFE) ||
         (character > 0xFFFF && character <= 0x10FFFF);
}

std::size_t XmlCharactersLength(std::string_view text) {
  const auto valid = text.substr(0, ValidUtf8Length(text));
  const auto control = std::ranges::find_if(valid, IsControl);
  auto length = static_cast<std::size_t>(control - valid.begin());
  for (const auto noncharacter : {"\xEF\xBF\xBE", "\xEF\xBF\xBF"}) {
    length = std::min(length, valid.substr(0, length).find(noncharacter));
  }
  return length;
}

std::size_t XmlNameLength(std::string_view text) {
  std::size_t at = 0;
  while (at < text.size()) {
    auto next = at;
    UChar32 character;
    U8_NEXT_UNSAFE(text.data(), next, character);
    if (!IsNameCharacter(static_cast<char32_t>(character), at == 0)) break;
    at = next;
  }
  return at;
}

}  // namespace platform
