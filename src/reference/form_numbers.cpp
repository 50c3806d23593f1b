#include "reference/form_numbers.h"

#include <algorithm>

#include "platform/agreed/form_numbers.h"
#include "platform/text.h"

namespace reference {
namespace {

using platform::Quoted;
using Verdict = platform::Utilities::FormNumberVerdict;

Verdict Wrong(std::string text) {
  return {false, std::move(text)};
}

// Without a form type a number is good that is one of any type.
bool IsFormType(std::string_view form_type) {
  return form_type.empty() || platform::FindFormType(form_type) != nullptr;
}

bool NeedsCheckDigit(std::string_view form_type) {
  const auto* const type = platform::FindFormType(form_type);
  return type != nullptr && type->needs_check_digit;
}

bool IsSevenDigits(std::string_view text) {
  return text.size() == platform::kFormNumberDigits &&
         std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

/// Seven digits and one more character that could be their check digit.
bool LacksItsDash(std::string_view text) {
  if (text.size() != platform::kFormNumberDigits + 1 ||
      !IsSevenDigits(text.substr(0, platform::kFormNumberDigits)))
    return false;
  return (text.back() >= '0' && text.back() <= '9') || text.back() == 'X';
}

}  // namespace

Verdict JudgeFormNumber(std::string_view form_type, std::string_view form_number) {
  if (!IsFormType(form_type)) return Wrong("There is no form type " + Quoted(form_type));
  const auto dash = form_number.find('-');
  const auto digits = form_number.substr(0, dash);
  if (LacksItsDash(form_number)) {
    return Wrong(
        "Form number " + Quoted(form_number) + " needs a dash before its check digit: " +
        Quoted(std::string(form_number.substr(0, platform::kFormNumberDigits)) + '-' + form_number.back()));
  }
  if (!IsSevenDigits(digits)) return Wrong("Form number " + Quoted(digits) + " must have seven digits");
  if (dash == std::string_view::npos) {
    if (!NeedsCheckDigit(form_type)) return {};
    return Wrong("Form number " + Quoted(digits) + " needs its check digit after a dash");
  }
  const auto check_digit = form_number.substr(dash + 1);
  if (check_digit == std::string(1, platform::CheckDigit(digits))) return {};
  return Wrong("Check digit " + Quoted(check_digit) + " does not belong to form number " + Quoted(digits));
}

// The length is left to the check of the whole number: what is typed may replace a selected text.
bool AllowsFormNumberKey(std::string_view form_type, char32_t key, std::string_view text) {
  if (!IsFormType(form_type)) return false;
  const bool has_dash = text.find('-') != std::string_view::npos;
  if (key == U'-') return !has_dash;
  if (key == U'X') return has_dash;
  return key >= U'0' && key <= U'9';
}

}  // namespace reference
