#include "platform/agreed/field_flags.h"

#include <charconv>

#include "platform/failure.h"

namespace platform {

std::optional<FlagWord> ParseFlagWord(std::string_view text) {
  constexpr std::size_t kMostDigits = 8;  // four bits each
  if (text.size() > kMostDigits) return std::nullopt;
  FlagWord word = 0;
  const auto* const end = text.data() + text.size();
  const auto parsed = std::from_chars(text.data(), end, word, 16);
  if (parsed.ec != std::errc() || parsed.ptr != end) return std::nullopt;
  return word;
}

FlagWord ReadFlagWord(const XmlElement& element, std::string_view attribute) {
  const auto text = element.Attribute(attribute);
  if (!text) return 0;
  if (const auto word = ParseFlagWord(*text)) return *word;
  throw Failure(Failure::Kind::kDamaged, "The flag word \"" + *text + "\" in attribute " +
                                             std::string(attribute) + " of element " + element.Name() +
                                             " is not a hexadecimal number of one to eight digits");
}

std::string FlagText(FlagWord word) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text;
  for (auto rest = word; rest != 0; rest >>= 4) text.insert(text.begin(), kDigits[rest & 0xf]);
  return text.empty() ? "0" : text;
}

}  // namespace platform
