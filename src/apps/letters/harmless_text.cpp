#include "apps/letters/harmless_text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>

#include "platform/text.h"

namespace apps {
namespace {

struct Range {
  std::uint32_t first;
  std::uint32_t last;
};
// Control characters, line and paragraph separators, marks that embed, override or isolate a direction.
constexpr auto kHarmful =
    std::to_array<Range>({{0x00, 0x1F}, {0x7F, 0x9F}, {0x2028, 0x202E}, {0x2066, 0x2069}});
constexpr std::string_view kBreaks = "\n\t";

bool IsHarmful(std::uint32_t character) {
  return std::ranges::any_of(
      kHarmful, [&](const Range& range) { return character >= range.first && character <= range.last; });
}

bool GoesOn(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// How many bytes the character has that begins with `lead`.
std::size_t LengthOf(unsigned char lead) {
  return lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

/// Of one well-formed character.
std::uint32_t CodePoint(std::string_view character) {
  const auto lead = static_cast<unsigned char>(character.front());
  std::uint32_t code = character.size() == 1 ? lead : lead & (0x7FU >> character.size());
  for (const char byte : character.substr(1))
    code = (code << 6U) | (static_cast<unsigned char>(byte) & 0x3FU);
  return code;
}

std::string Escaped(const char* format, std::uint32_t number) {
  std::array<char, 12> escape{};
  std::snprintf(escape.data(), escape.size(), format, number);
  return escape.data();
}

std::string WithoutHarm(std::string_view text, std::string_view kept, const char* format = "\\u%04x") {
  std::string harmless;
  harmless.reserve(text.size());
  while (!text.empty()) {
    auto whole = text.substr(0, platform::ValidUtf8Length(text));
    text.remove_prefix(whole.size());
    while (!whole.empty()) {
      const auto character = whole.substr(0, LengthOf(static_cast<unsigned char>(whole.front())));
      const auto code = CodePoint(character);
      const bool told = IsHarmful(code) && kept.find(character) == std::string_view::npos;
      harmless += told ? Escaped(format, code) : std::string(character);
      whole.remove_prefix(character.size());
    }
    if (text.empty()) break;
    harmless += Escaped("\\x%02x", static_cast<unsigned char>(text.front()));
    text.remove_prefix(1);
  }
  return harmless;
}

}  // namespace

std::string Harmless(std::string_view text) {
  return WithoutHarm(text, kBreaks);
}

std::string HarmlessCell(std::string_view text) {
  return WithoutHarm(text, "");
}

std::string WithReferences(std::string_view xml) {
  return WithoutHarm(xml, kBreaks, "&#x%x;");
}

std::size_t UnfinishedAtEnd(std::string_view text) {
  std::size_t bytes = 0;
  while (bytes < std::min<std::size_t>(3, text.size()) && GoesOn(text[text.size() - 1 - bytes])) ++bytes;
  if (bytes == text.size()) return 0;
  const auto lead = static_cast<unsigned char>(text[text.size() - 1 - bytes]);
  return lead >= 0xC0 && LengthOf(lead) > bytes + 1 ? bytes + 1 : 0;
}

}  // namespace apps
