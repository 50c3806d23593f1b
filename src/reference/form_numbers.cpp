#include "reference/form_numbers.h"

#include <algorithm>
#include <array>
#include <optional>

#include "platform/text.h"

namespace reference {
namespace {

using platform::Quoted;
using Verdict = platform::Utilities::FormNumberVerdict;

constexpr std::size_t kDigits = 7;
constexpr int kModulus = 11;

enum class CheckDigitUse { kOptional, kRequired };

struct FormNumberRule {
  std::string_view form_type;
  CheckDigitUse check_digit;
};

// Receipts and citations are copied from paper by hand: there the check digit must be given. Without a form
// type the most generous rule holds. Decision [form-numbers].
constexpr auto kRules = std::to_array<FormNumberRule>({
    {"", CheckDigitUse::kOptional},
    {"C", CheckDigitUse::kOptional},  // tax liability assessment
    {"M", CheckDigitUse::kOptional},  // motor fuel return
    {"O", CheckDigitUse::kOptional},  // overdue account
    {"W", CheckDigitUse::kOptional},  // warrant docket
    {"V", CheckDigitUse::kRequired},  // vehicle license citation
    {"R", CheckDigitUse::kRequired},  // receipt
});

Verdict Wrong(std::string text) {
  return {false, std::move(text)};
}

std::optional<FormNumberRule> RuleFor(std::string_view form_type) {
  const auto* const rule = std::ranges::find(kRules, form_type, &FormNumberRule::form_type);
  return rule == kRules.end() ? std::nullopt : std::optional(*rule);
}

bool IsSevenDigits(std::string_view text) {
  return text.size() == kDigits && std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

/// Seven digits and one more character that could be their check digit.
bool LacksItsDash(std::string_view text) {
  if (text.size() != kDigits + 1 || !IsSevenDigits(text.substr(0, kDigits))) return false;
  return (text.back() >= '0' && text.back() <= '9') || text.back() == 'X';
}

}  // namespace

char CheckDigit(std::string_view seven_digits) {
  int sum = 0;
  for (std::size_t i = 0; i < kDigits; ++i) sum += static_cast<int>(kDigits - i) * (seven_digits[i] - '0');
  const int rest = sum % kModulus;
  return rest == 10 ? 'X' : static_cast<char>('0' + rest);
}

Verdict JudgeFormNumber(std::string_view form_type, std::string_view form_number) {
  const auto rule = RuleFor(form_type);
  if (!rule) return Wrong("There is no form type " + Quoted(form_type));
  const auto dash = form_number.find('-');
  const auto digits = form_number.substr(0, dash);
  if (LacksItsDash(form_number)) {
    return Wrong("Form number " + Quoted(form_number) + " needs a dash before its check digit: " +
                 Quoted(std::string(form_number.substr(0, kDigits)) + '-' + form_number.back()));
  }
  if (!IsSevenDigits(digits)) return Wrong("Form number " + Quoted(digits) + " must have seven digits");
  if (dash == std::string_view::npos) {
    if (rule->check_digit == CheckDigitUse::kOptional) return {};
    return Wrong("Form number " + Quoted(digits) + " needs its check digit after a dash");
  }
  const auto check_digit = form_number.substr(dash + 1);
  if (check_digit == std::string(1, CheckDigit(digits))) return {};
  return Wrong("Check digit " + Quoted(check_digit) + " does not belong to form number " + Quoted(digits));
}

// The length is left to the check of the whole number: what is typed may replace a selected text.
bool AllowsFormNumberKey(std::string_view form_type, char32_t key, std::string_view text) {
  if (!RuleFor(form_type)) return false;
  const bool has_dash = text.find('-') != std::string_view::npos;
  if (key == U'-') return !has_dash;
  if (key == U'X') return has_dash;
  return key >= U'0' && key <= U'9';
}

}  // namespace reference
