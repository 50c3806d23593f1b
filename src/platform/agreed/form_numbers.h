#pragma once

#include <algorithm>
#include <array>
#include <string_view>

/// The documents a customer can have, and their numbers. docs/form-numbers.md tells it for people.
namespace platform {

/// FORM_TYP_CD. The code table REFDOCTYP offers them to users.
namespace form_type {
inline constexpr std::string_view kAssessment = "C";
inline constexpr std::string_view kWarrant = "W";
inline constexpr std::string_view kReturn = "M";
inline constexpr std::string_view kOverdueAccount = "O";
inline constexpr std::string_view kCitation = "V";
inline constexpr std::string_view kReceipt = "R";
}  // namespace form_type

struct FormType {
  std::string_view code;
  std::string_view description;
  bool needs_check_digit;  ///< where its number is typed
};

// Receipts and citations are copied from paper by hand: there the check digit is needed. Decision
// [form-numbers].
inline constexpr auto kFormTypes = std::to_array<FormType>({
    {form_type::kAssessment, "Tax Liability Assessment", false},
    {form_type::kWarrant, "Warrant Docket", false},
    {form_type::kReturn, "Motor Fuel Return", false},
    {form_type::kOverdueAccount, "Overdue Account", false},
    {form_type::kCitation, "Vehicle License Citation", true},
    {form_type::kReceipt, "Receipt", true},
});

/// Null where there is no such form type.
inline const FormType* FindFormType(std::string_view code) {
  const auto* const found = std::ranges::find(kFormTypes, code, &FormType::code);
  return found == kFormTypes.end() ? nullptr : found;
}

inline constexpr std::size_t kFormNumberDigits = 7;

/// The check digit of a form number of seven digits: "0" to "9" or "X". The digits are weighted 7, 6, 5, 4,
/// 3, 2, 1 from the left; the digit is the sum modulo 11, and "X" stands for ten.
char CheckDigit(std::string_view seven_digits);

}  // namespace platform
