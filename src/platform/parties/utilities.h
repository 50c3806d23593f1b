#pragma once

#include <string>
#include <string_view>

namespace platform {

class Control;
class Form;
class TextField;

/// Code-table look-ups, field marking and the office's rules for numbers.
class Utilities {
 public:
  virtual ~Utilities() = default;

  /// The code's value in a code table; the code itself when the table has no value for it.
  virtual std::string GetCodeValue(const std::string& table, const std::string& code) = 0;
  /// The code's description in a code table; "" when there is none.
  virtual std::string GetCodeDescription(const std::string& table, const std::string& code) = 0;
  /// The officer's name; "" when there is no such officer.
  virtual std::string GetOfficerName(const std::string& officer_id) = 0;
  /// `text` as a quoted SQL text literal.
  virtual std::string SqlQuote(std::string_view text) = 0;

  virtual void MarkFieldInvalid(Control& control) = 0;
  virtual void MarkFieldValid(Control& control) = 0;

  /// Whether the form number (with its check digit where the form type has one) is valid for the type.
  struct FormNumberVerdict {
    bool valid = true;
    std::string text;  ///< what is wrong, for a message; "" when valid
  };
  virtual FormNumberVerdict ValidateFormNumber(const std::string& form_type,
                                               const std::string& form_number) = 0;

  // Whether a field takes a typed character. Keys that edit or move are not asked for.
  /// `field` holds the text the key would go into.
  virtual bool AllowFormNumberKey(const std::string& form_type, char32_t key, const TextField& field) = 0;
  virtual bool AllowBatchNumberKey(char32_t key) = 0;
  /// Zip codes, and what is written like them: a Troop/District.
  virtual bool AllowZipKey(char32_t key) = 0;

  /// The keys that the name and city filters let through besides letters: control characters (editing), and
  /// the blank, apostrophe and hyphen that names are written with.
  virtual bool IsControlKey(char32_t key) = 0;
  /// Whether a text that is to be pasted into a name or city could have been a name: letters of whatever
  /// script, blanks, apostrophes, hyphens and periods. "" could.
  virtual bool IsAlphaText(std::string_view text) = 0;

  /// Whether the user of this workspace holds a right (agreed/rights.h).
  virtual bool IsAuthorized(std::string_view right) = 0;
  /// A dialog that has been loaded makes itself known; it is forgotten when it goes.
  virtual void RegisterForm(Form& form) = 0;

  /// Whether the highway patrol has such a troop, such a district of a troop.
  virtual bool ValidateTroop(const std::string& troop) = 0;
  virtual bool ValidateTroopDistrict(const std::string& troop, const std::string& district) = 0;
};

}  // namespace platform
