#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/controls/text_field.h"
#include "platform/parties/utilities.h"
#include "platform/text.h"

namespace fakes {

/// Code tables in memory; every form number is valid until the test says otherwise.
class FakeUtilities : public platform::Utilities {
 public:
  using TableAndCode = std::pair<std::string, std::string>;

  std::map<TableAndCode, std::string> values;
  std::map<TableAndCode, std::string> descriptions;
  std::map<std::string, std::string> officers;  ///< names by id
  std::function<FormNumberVerdict(const std::string& form_type, const std::string& form_number)>
      form_number_rule;
  std::vector<TableAndCode> validated_form_numbers;  ///< form type and number, oldest first

  std::string GetCodeValue(const std::string& table, const std::string& code) override {
    const auto found = values.find({table, code});
    return found == values.end() ? code : found->second;
  }
  std::string GetCodeDescription(const std::string& table, const std::string& code) override {
    const auto found = descriptions.find({table, code});
    return found == descriptions.end() ? "" : found->second;
  }
  std::string GetOfficerName(const std::string& officer_id) override {
    const auto found = officers.find(officer_id);
    return found == officers.end() ? "" : found->second;
  }
  std::string SqlQuote(std::string_view text) override {
    return "'" + platform::ReplaceAll(text, "'", "''") + "'";
  }
  void MarkFieldInvalid(platform::Control& control) override { control.SetMarkedInvalid(true); }
  void MarkFieldValid(platform::Control& control) override { control.SetMarkedInvalid(false); }
  FormNumberVerdict ValidateFormNumber(const std::string& form_type,
                                       const std::string& form_number) override {
    validated_form_numbers.emplace_back(form_type, form_number);
    return form_number_rule ? form_number_rule(form_type, form_number) : FormNumberVerdict{};
  }

  /// Characters that a field refuses; every other one is taken.
  std::u32string refused_keys;
  std::vector<std::string> asked_form_types;  ///< of the form number keys, oldest first
  /// Troops and Troop/Districts, "B" or "B12", that there are not.
  std::set<std::string> unknown_troops;
  std::vector<std::string> validated_troops;  ///< "B" or "B/12", oldest first

  bool AllowFormNumberKey(const std::string& form_type, char32_t key, const platform::TextField&) override {
    asked_form_types.push_back(form_type);
    return Allows(key);
  }
  bool AllowBatchNumberKey(char32_t key) override { return Allows(key); }
  bool AllowZipKey(char32_t key) override { return Allows(key); }
  /// Keys that a name's filter lets through besides letters, and texts that may not be pasted.
  std::u32string control_keys = U"\b\t\r\x16";
  std::set<std::string, std::less<>> no_names;
  bool IsControlKey(char32_t key) override { return control_keys.find(key) != std::u32string::npos; }
  bool IsAlphaText(std::string_view text) override { return !no_names.contains(text); }

  /// The user holds every right but these.
  std::set<std::string, std::less<>> withheld_rights;
  std::vector<platform::Form*> registered_forms;  ///< oldest first
  bool IsAuthorized(std::string_view right) override { return !withheld_rights.contains(right); }
  void RegisterForm(platform::Form& form) override { registered_forms.push_back(&form); }

  bool ValidateTroop(const std::string& troop) override {
    validated_troops.push_back(troop);
    return !unknown_troops.contains(troop);
  }
  bool ValidateTroopDistrict(const std::string& troop, const std::string& district) override {
    validated_troops.push_back(troop + "/" + district);
    return !unknown_troops.contains(troop + district);
  }

 private:
  bool Allows(char32_t key) const { return refused_keys.find(key) == std::u32string::npos; }
};

}  // namespace fakes
