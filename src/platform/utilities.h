#pragma once

#include <string>
#include <string_view>

namespace platform {

class Control;

/// Code-table look-ups, field marking and the office's rules for numbers.
class Utilities {
 public:
  virtual ~Utilities() = default;

  /// The code's value in a code table; the code itself when the table has no value for it.
  virtual std::string GetCodeValue(const std::string& table, const std::string& code) = 0;
  /// The code's description in a code table; "" when there is none.
  virtual std::string GetCodeDescription(const std::string& table, const std::string& code) = 0;
  /// `text` as a quoted SQL text literal.
  virtual std::string SqlQuote(std::string_view text) = 0;

  virtual void MarkFieldInvalid(Control& control) = 0;
  virtual void MarkFieldValid(Control& control) = 0;

  /// Whether the form number (with its check digit where the form type has one) is valid for the type.
  struct FormNumberVerdict {
    bool valid = true;
    std::string text;  ///< what is wrong, for a message; "" when valid
  };
  virtual FormNumberVerdict ValidateFormNumber(const std::string& form_type, const std::string& form_number) = 0;
};

}  // namespace platform
