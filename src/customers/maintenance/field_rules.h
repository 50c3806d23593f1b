#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "customers/maintenance/customer_controls.h"
#include "platform/parties/services.h"

namespace customers {

/// The rules that every field of a customer obeys: which are required, what a zip code looks like, and what
/// follows of it for the commands. No failure leaves its members, which are reported as those of
/// "ZEMLO_CustMaint".
class FieldRules {
 public:
  /// What the rules look at and set; all of it outlives them.
  struct Uses {
    const platform::Services& services;
    CustomerControls& controls;
    const std::string& message_title;
    const bool& DataChanged;
    /// The resident address the customer had when the dialog was shown.
    std::function<std::string()> OrigResAddr;
    /// Whether a save is on its way, which no command may overtake.
    std::function<bool()> is_saving;
  };
  explicit FieldRules(Uses uses) : uses_(std::move(uses)) {}

  // Each marks its field, appends its message to the error list where the field is wrong, and returns whether
  // it is valid. A number that has no such field is reported and counts as not valid.
  /// A text is required. The lines of an address are one text.
  bool ValidateName(std::int16_t field, std::int16_t partner = -1);
  bool ValidateZip(std::int16_t field);
  bool ValidateState(std::int16_t list);
  void ValidatePhone();
  void ValidateFuelTaxAccount();
  void SetValidation(platform::NumberField& control, std::string_view message);

  /// All rules, in the order of the screen; true where the error list is empty. While a suggested mailing
  /// address is on the form nothing is wrong.
  bool CheckEdits();
  /// Shows the error list in a message box; true where it is empty.
  bool DisplayErrorMessages(const std::string& errors);
  /// CheckEdits, and shows what is wrong.
  bool AreFieldsValid();

  /// Whether the last check found that address complete, so that it can be copied into the other one.
  bool CanCopy(const AddressSide& from) const { return can_copy_.at(from.number); }
  /// Lines that end with a line break each.
  const std::string& errors() const { return errors_; }
  void ForgetErrors() { errors_.clear(); }

 private:
  template <typename Work>
  bool Procedure(std::string_view name, Work&& work) const;
  bool Fail(platform::Control& control, std::string_view message, std::string reason);
  bool CheckAddress(const AddressSide& side);
  void CheckFields();
  void CheckResidentAddress();
  void AllowCopy(const AddressSide& from, bool allowed);
  bool IsResidentAddressWanted() const;

  const Uses uses_;
  std::string errors_;
  std::array<bool, 2> can_copy_{};
};

}  // namespace customers
