#include "customers/display_encoders.h"

#include <cstddef>
#include <initializer_list>

#include "platform/parties/trap.h"
#include "platform/text.h"

namespace customers {

namespace {

/// Cuts `text` into groups of so many characters; unchanged where it has more or fewer than all of them.
std::string InGroups(std::string_view text, std::initializer_list<std::size_t> sizes) {
  std::size_t expected = 0;
  for (const auto size : sizes) expected += size;
  if (platform::CharacterCount(text) != expected) return std::string(text);

  std::string grouped;
  for (const auto size : sizes) {
    if (!grouped.empty()) grouped += '-';
    const auto group = platform::FirstCharacters(text, size);
    grouped += group;
    text.remove_prefix(group.size());
  }
  return grouped;
}

std::string DigitsOf(std::string_view text) {
  std::string digits;
  for (const char character : text) {
    if (character >= '0' && character <= '9') digits += character;
  }
  return digits;
}

/// What `encode` makes of the text; the text itself where it fails, which is reported under the procedure.
template <typename Encode>
std::string Encoded(platform::ErrorReporter& errors, std::string_view procedure, std::string_view text,
                    Encode&& encode) {
  std::string encoded;
  if (platform::Trap(errors, procedure, [&] { encoded = encode(text); })) return encoded;
  return std::string(text);
}

}  // namespace

std::string DisplayEncoders::EncodeZipCode(std::string_view zip) const {
  return Encoded(errors_, "ZEMLO_Corresp.EncodeZipCode", zip, [](std::string_view text) {
    return InGroups(text, {5, 4});
  });
}

std::string DisplayEncoders::EncodeFuelTaxAccountNbr(std::string_view account) const {
  return Encoded(errors_, "ZEMLO_Corresp.EncodeFuelTaxAccountNbr", account, [](std::string_view text) {
    return InGroups(text, {2, 9, 2});
  });
}

std::string DisplayEncoders::FormatPhone(std::string_view phone) const {
  return Encoded(errors_, "ZEMLO_Corresp.FormatPhone", phone, [](std::string_view text) {
    const auto digits = DigitsOf(text);
    if (digits.size() == 10) return "(" + digits.substr(0, 3) + ") " + InGroups(digits.substr(3), {3, 4});
    return InGroups(digits, {3, 4});
  });
}

}  // namespace customers
