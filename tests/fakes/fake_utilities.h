#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/controls/control.h"
#include "platform/text.h"
#include "platform/utilities.h"

namespace fakes {

/// Code tables in memory; every form number is valid until the test says otherwise.
class FakeUtilities : public platform::Utilities {
 public:
  using TableAndCode = std::pair<std::string, std::string>;

  std::map<TableAndCode, std::string> values;
  std::map<TableAndCode, std::string> descriptions;
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
};

}  // namespace fakes
