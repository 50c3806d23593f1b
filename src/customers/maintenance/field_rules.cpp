#include "customers/maintenance/field_rules.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "platform/failure.h"
#include "platform/parties/trap.h"
#include "platform/text.h"

namespace customers {

namespace {

struct FieldName {
  std::int16_t field;
  std::string_view text;
};
constexpr auto kFieldNames = std::to_array<FieldName>({
    {0, "- First name"},
    {2, "- Last name"},
    {4, "- Business name"},
    {6, "- Mailing address"},
    {7, "- Mailing address"},
    {8, "- City"},
    {9, "- Zip"},
    {10, "- Resident address"},
    {11, "- Resident address"},
    {12, "- City"},
    {13, "- Zip"},
});

constexpr std::size_t kZipWithHyphen = 10;
constexpr std::size_t kHyphenAt = 5;
constexpr const char* kZipReason = "A zip code is five digits, or nine with a hyphen after the fifth.";

std::string_view NameTextOf(std::int16_t field) {
  const auto* const found = std::ranges::find(kFieldNames, field, &FieldName::field);
  if (found != kFieldNames.end()) return found->text;
  throw platform::Failure(platform::Failure::Kind::kInternal,
                          "No text is required in field " + std::to_string(field) + ".");
}

bool IsLine(std::int16_t field) {
  const auto number = static_cast<std::size_t>(field);
  return number == kMailingSide.Line1() || number == kMailingSide.Line2() ||
         number == kResidentSide.Line1() || number == kResidentSide.Line2();
}

std::int16_t Number(std::size_t field) {
  return static_cast<std::int16_t>(field);
}

}  // namespace

template <typename Work>
bool FieldRules::Procedure(std::string_view name, Work&& work) const {
  return platform::Trap(uses_.services, std::string("ZEMLO_CustMaint.").append(name),
                        std::forward<Work>(work));
}

bool FieldRules::Fail(platform::Control& control, std::string_view message, std::string reason) {
  uses_.services.utilities.MarkFieldInvalid(control);
  control.SetInvalidReason(std::move(reason));
  errors_ += message;
  errors_ += platform::kLineBreak;
  return false;
}

bool FieldRules::ValidateName(std::int16_t field, std::int16_t partner) {
  bool valid = false;
  Procedure("ValidateName", [&] {
    const auto name = NameTextOf(field);
    auto& controls = uses_.controls;
    auto& control = controls.mTxtCust.at(static_cast<std::size_t>(field));
    auto text = control.text();
    if (partner >= 0 && IsLine(field)) text += controls.mTxtCust.at(static_cast<std::size_t>(partner)).text();
    const auto entered = platform::TrimBlanks(text);
    const bool is_business = static_cast<std::size_t>(field) == text_number::kBusinessName;
    const bool holds_percent = entered.find('%') != std::string_view::npos;
    const std::size_t least = !is_business ? 1 : holds_percent ? 3 : 2;
    valid = platform::CharacterCount(entered) >= least;
    if (valid) return uses_.services.utilities.MarkFieldValid(control);
    const auto message = std::string(name) + " is a required field.";
    const bool is_short = !entered.empty();
    Fail(control, message,
         is_short ? "A business name has at least two characters, with \"%\" in it three."
                  : message.substr(message.find(' ') + 1));
  });
  return valid;
}

bool FieldRules::ValidateZip(std::int16_t field) {
  bool valid = false;
  Procedure("ValidateZip", [&] {
    auto& control = uses_.controls.mTxtCust.at(static_cast<std::size_t>(field));
    const auto zip = platform::TrimBlanks(control.text());
    uses_.services.utilities.MarkFieldValid(control);
    const auto hyphen = zip.find('-');
    if (zip.empty()) {
      Fail(control, "Zip Code is required", "Zip code is a required field.");
    } else if (platform::CharacterCount(zip) != kZipWithHyphen || hyphen == kHyphenAt) {
      valid = true;
    } else {
      const bool has_hyphen = hyphen != std::string_view::npos;
      Fail(control, has_hyphen ? "Invalid - position in zip code" : "Invalid Zip Code", kZipReason);
    }
  });
  return valid;
}

bool FieldRules::ValidateState(std::int16_t list) {
  bool valid = false;
  Procedure("ValidateState", [&] {
    auto& states = uses_.controls.mCboState.at(static_cast<std::size_t>(list));
    valid = !platform::Trim(states.Code()).empty();
    if (valid) return uses_.services.utilities.MarkFieldValid(states);
    constexpr std::string_view kMessage = "- State is a required field and must be selected from the list.";
    Fail(states, kMessage, std::string(kMessage.substr(2)));
  });
  return valid;
}

void FieldRules::SetValidation(platform::NumberField& control, std::string_view message) {
  Procedure("SetValidation", [&] {
    if (control.IsValid()) {
      uses_.services.utilities.MarkFieldValid(control);
    } else {
      Fail(control, message, control.WhyInvalid());
    }
  });
}

void FieldRules::ValidatePhone() {
  Procedure("ValidatePhone", [&] { SetValidation(uses_.controls.mPhone, "- Phone number is invalid."); });
}

void FieldRules::ValidateFuelTaxAccount() {
  Procedure("ValidateFuelTaxAccount",
            [&] { SetValidation(uses_.controls.mFuelTaxAcct, "- Fuel tax account number is invalid."); });
}

bool FieldRules::CheckAddress(const AddressSide& side) {
  // Every rule is asked, so that the list of errors is whole.
  const bool has_lines = ValidateName(Number(side.Line1()), Number(side.Line2()));
  const bool has_state = ValidateState(Number(side.number));
  const bool has_city = ValidateName(Number(side.City()));
  const bool has_zip = ValidateZip(Number(side.Zip()));
  return has_lines && has_state && has_city && has_zip;
}

void FieldRules::AllowCopy(const AddressSide& from, bool allowed) {
  can_copy_.at(from.number) = allowed;
  const auto command =
      from.number == kMailingSide.number ? option_number::kSameAsMailing : option_number::kSameAsResident;
  uses_.controls.mCmdOption.at(command).SetEnabled(allowed && !uses_.is_saving());
}

bool FieldRules::IsResidentAddressWanted() const {
  auto& controls = uses_.controls;
  if (!controls.IsBusiness()) return true;
  auto entered = uses_.OrigResAddr();
  for (auto field = kResidentSide.Line1(); field <= kResidentSide.Zip(); ++field)
    entered += controls.mTxtCust.at(field).text();
  return !platform::TrimBlanks(entered + controls.State(kResidentSide)).empty();
}

void FieldRules::CheckResidentAddress() {
  if (IsResidentAddressWanted()) return AllowCopy(kResidentSide, CheckAddress(kResidentSide));
  auto& controls = uses_.controls;
  for (auto field = kResidentSide.Line1(); field <= kResidentSide.Zip(); ++field)
    uses_.services.utilities.MarkFieldValid(controls.mTxtCust.at(field));
  uses_.services.utilities.MarkFieldValid(controls.mCboState[kResidentSide.number]);
  AllowCopy(kResidentSide, false);
}

void FieldRules::CheckFields() {
  if (uses_.controls.IsBusiness()) {
    ValidateName(Number(text_number::kBusinessName));
  } else {
    ValidateName(Number(text_number::kFirstName));
    ValidateName(Number(text_number::kLastName));
  }
  ValidateFuelTaxAccount();
  ValidatePhone();
  AllowCopy(kMailingSide, CheckAddress(kMailingSide));
  CheckResidentAddress();
  const bool may_save = errors_.empty() && uses_.DataChanged && !uses_.is_saving();
  uses_.controls.mCmdOption[option_number::kSave].SetEnabled(may_save);
}

bool FieldRules::CheckEdits() {
  errors_.clear();
  const bool done = Procedure("CheckEdits", [&] {
    if (!uses_.controls.HasMailingSuggestion()) CheckFields();
  });
  return done && platform::Trim(errors_).empty();
}

bool FieldRules::DisplayErrorMessages(const std::string& errors) {
  bool is_empty = false;
  Procedure("DisplayErrorMessages", [&] {
    is_empty = platform::Trim(errors).empty();
    if (!is_empty)
      uses_.services.host.ShowMessage({errors, platform::MessageIcon::kCritical, uses_.message_title});
  });
  return is_empty;
}

bool FieldRules::AreFieldsValid() {
  bool valid = false;
  Procedure("AreFieldsValid", [&] {
    const bool checked = CheckEdits();
    // A check that could not be made has told why, and is no leave to save.
    valid = DisplayErrorMessages(errors_) && checked;
  });
  return valid;
}

}  // namespace customers
