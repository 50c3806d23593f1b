#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "platform/controls/form.h"
#include "platform/parties/clock.h"
#include "platform/parties/reference_database.h"
#include "platform/parties/settings.h"
#include "platform/parties/user_rights.h"
#include "platform/parties/utilities.h"
#include "reference/patrol_districts.h"

namespace reference {

/// Code-table look-ups of the user's region, field marks and the office's number rules. User-interface thread
/// only. The parts it is made with outlive it.
///
/// A value is one of a code that is current today. A description is given for ended codes too, the last one
/// they had: letters of earlier years carry them. Tables and codes are found without regard to case. A table
/// is read once a day, officers like codes: grids look up several codes for every row. Look-ups throw what
/// Select throws.
class OfficeUtilities : public platform::Utilities {
 public:
  OfficeUtilities(platform::ReferenceDatabase& reference, const platform::Settings& settings,
                  const platform::UserRights& rights, const platform::Clock& clock)
      : reference_(reference), settings_(settings), rights_(rights), clock_(clock), patrol_(reference) {}

  /// The additional information of the code; "" where the entry has none, the code where there is no entry.
  std::string GetCodeValue(const std::string& table, const std::string& code) override;
  std::string GetCodeDescription(const std::string& table, const std::string& code) override;
  /// Found without blanks around the id and without regard to case; of every region.
  std::string GetOfficerName(const std::string& officer_id) override;
  /// In apostrophes, the ones inside doubled.
  std::string SqlQuote(std::string_view text) override;

  void MarkFieldInvalid(platform::Control& control) override;
  void MarkFieldValid(platform::Control& control) override;

  FormNumberVerdict ValidateFormNumber(const std::string& form_type, const std::string& form_number) override;

  bool AllowFormNumberKey(const std::string& form_type, char32_t key,
                          const platform::TextField& field) override;
  /// Digits.
  bool AllowBatchNumberKey(char32_t key) override;
  /// Digits, letters (the codes of carriers abroad have them) and the dash.
  bool AllowZipKey(char32_t key) override;
  bool IsControlKey(char32_t key) override;
  bool IsAlphaText(std::string_view text) override;
  bool IsAuthorized(std::string_view right) override;
  void RegisterForm(platform::Form& form) override;
  bool ValidateTroop(const std::string& troop) override;
  bool ValidateTroopDistrict(const std::string& troop, const std::string& district) override;

 private:
  struct Code {
    std::string description;
    std::string value;
    bool is_current = false;
  };
  using CodeTable = std::map<std::string, Code>;            // by code in upper case
  using OfficerNames = std::map<std::string, std::string>;  // by id in upper case

  void ForgetTablesOfYesterday();
  const Code* FindCode(const std::string& table, const std::string& code);
  CodeTable ReadTable(const std::string& table);
  OfficerNames ReadOfficers();

  platform::ReferenceDatabase& reference_;
  const platform::Settings& settings_;
  const platform::UserRights& rights_;
  const platform::Clock& clock_;

  PatrolDistricts patrol_;
  platform::Date tables_day_{};
  std::map<std::string, CodeTable> tables_;  // by name in upper case, as of tables_day_
  std::optional<OfficerNames> officers_;     // the same

  std::map<platform::Form*, platform::Connection> registered_;  // while they are on the screen
};

}  // namespace reference
