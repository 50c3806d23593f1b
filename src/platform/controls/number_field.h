#pragma once

#include <string>
#include <string_view>

#include "platform/controls/text_field.h"

namespace platform {

/// A number written with punctuation: the user types it as he likes, the value is its digits, and what is
/// valid stands grouped once the field is left.
///
/// A value that came from the register is valid as long as it is the same, whatever it is: who corrects
/// something else need not know a better one. Decision [customer-numbers].
class NumberField : public TextField {
 public:
  NumberField();

  /// The digits; the text as it stands where it holds more than digits and punctuation, and for a stored
  /// value that is still the same, that.
  std::string Value() const;
  /// Shows a stored value.
  void SetValue(std::string stored);

  bool IsValid() const { return WhyInvalid().empty(); }
  /// "" for a valid one.
  std::string WhyInvalid() const;

  /// The user leaves the field.
  void UserLeaves();
  Event<> LostFocus;

 private:
  virtual std::string WhyNot(std::string_view digits) const = 0;
  virtual std::string Shown(std::string_view digits) const = 0;
  /// Digits and punctuation, as it is stored; the text where it holds something else.
  static std::string Read(std::string_view text);

  std::string stored_;
};

/// The phone of a customer.
class ZEMLO_Phone : public NumberField {
  std::string WhyNot(std::string_view digits) const override;
  std::string Shown(std::string_view digits) const override;
};

/// The fuel tax account of a customer.
class ZEMLO_FuelTaxAcct : public NumberField {
  std::string WhyNot(std::string_view digits) const override;
  std::string Shown(std::string_view digits) const override;
};

}  // namespace platform
