#include "platform/agreed/customer_numbers.h"

#include <algorithm>
#include <numeric>

#include "platform/text.h"

namespace platform {
namespace {

constexpr std::size_t kPhoneDigits = 10;
constexpr std::size_t kExchangeAt = 3;
constexpr std::size_t kAccountDigits = 13;
constexpr std::size_t kAccountNumberAt = 2;
constexpr std::size_t kAccountPlaceAt = 11;

bool IsDigits(std::string_view text, std::size_t count) {
  return text.size() == count && DigitsOf(text).size() == count;
}

bool IsZero(std::string_view digits) {
  return digits.find_first_not_of('0') == std::string_view::npos;
}

}  // namespace

std::string DigitsOf(std::string_view text) {
  std::string digits;
  std::ranges::copy_if(text, std::back_inserter(digits),
                       [](char character) { return character >= '0' && character <= '9'; });
  return digits;
}

std::string WhyNoPhoneNumber(std::string_view digits) {
  if (digits.empty()) return "";
  if (!IsDigits(digits, kPhoneDigits)) return "A phone number has ten digits, area code first.";
  if (digits[0] < '2') return "No area code begins with 0 or 1.";
  if (digits[kExchangeAt] < '2') return "No phone number has a 0 or 1 right after the area code.";
  return "";
}

std::string WhyNoFuelTaxAccount(std::string_view digits) {
  if (digits.empty()) return "";
  if (!IsDigits(digits, kAccountDigits))
    return "A fuel tax account number has thirteen digits: two, nine and two.";
  if (IsZero(digits.substr(kAccountNumberAt, kAccountPlaceAt - kAccountNumberAt)))
    return "The nine digits in the middle of a fuel tax account number are not all zero.";
  if (IsZero(digits.substr(kAccountPlaceAt))) return "A fuel tax account number does not end in 00.";
  return "";
}

bool IsPhoneNumber(std::string_view digits) {
  return WhyNoPhoneNumber(digits).empty();
}

bool IsFuelTaxAccount(std::string_view digits) {
  return WhyNoFuelTaxAccount(digits).empty();
}

std::string ShownPhone(std::string_view digits) {
  if (!IsDigits(digits, kPhoneDigits))
    return IsDigits(digits, 7) ? InGroups(digits, {3, 4}) : std::string(digits);
  return "(" + std::string(digits.substr(0, kExchangeAt)) + ") " +
         InGroups(digits.substr(kExchangeAt), {3, 4});
}

std::string ShownFuelTaxAccount(std::string_view digits) {
  return InGroups(digits, {2, 9, 2});
}

std::string InGroups(std::string_view text, std::initializer_list<std::size_t> sizes) {
  const auto expected = std::accumulate(sizes.begin(), sizes.end(), std::size_t{0});
  if (CharacterCount(text) != expected) return std::string(text);
  std::string grouped;
  for (const auto size : sizes) {
    if (!grouped.empty()) grouped += '-';
    const auto group = FirstCharacters(text, size);
    grouped += group;
    text.remove_prefix(group.size());
  }
  return grouped;
}

}  // namespace platform
