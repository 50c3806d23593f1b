#include "platform/controls/number_field.h"

#include "platform/agreed/customer_numbers.h"
#include "platform/text.h"

namespace platform {
namespace {

constexpr std::string_view kDigitsAndPunctuation = "0123456789 ()-./+";
constexpr std::size_t kMostCharacters = 20;

bool IsTaken(char32_t key) {
  return key < 0x80 && kDigitsAndPunctuation.find(static_cast<char>(key)) != std::string_view::npos;
}

}  // namespace

NumberField::NumberField() {
  max_length = kMostCharacters;
  key_filter = [](char32_t key) -> std::optional<char32_t> {
    return IsTaken(key) ? std::optional(key) : std::nullopt;
  };
}

std::string NumberField::Read(std::string_view text) {
  const auto digits = DigitsOf(text);
  const bool has_more = text.find_first_not_of(kDigitsAndPunctuation) != std::string_view::npos;
  const bool is_number = !has_more && (!digits.empty() || IsBlank(text));
  return is_number ? digits : std::string(TrimBlanks(text));
}

std::string NumberField::Value() const {
  const bool is_stored = text() == stored_ || text() == Shown(stored_) || Read(text()) == stored_;
  return is_stored ? stored_ : Read(text());
}

void NumberField::SetValue(std::string stored) {
  stored_ = std::move(stored);
  SetText(Shown(stored_));
}

std::string NumberField::WhyInvalid() const {
  const auto value = Value();
  return value == stored_ ? "" : WhyNot(value);
}

void NumberField::UserLeaves() {
  if (IsValid()) SetText(Shown(Value()));
  LostFocus();
}

std::string ZEMLO_Phone::WhyNot(std::string_view digits) const {
  return WhyNoPhoneNumber(digits);
}
std::string ZEMLO_Phone::Shown(std::string_view digits) const {
  return ShownPhone(digits);
}

std::string ZEMLO_FuelTaxAcct::WhyNot(std::string_view digits) const {
  return WhyNoFuelTaxAccount(digits);
}
std::string ZEMLO_FuelTaxAcct::Shown(std::string_view digits) const {
  return ShownFuelTaxAccount(digits);
}

}  // namespace platform
