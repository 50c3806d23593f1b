#include "reference/office_utilities.h"

#include "platform/controls/form.h"
#include "platform/controls/text_field.h"
#include "platform/record_set.h"
#include "platform/text.h"
#include "reference/form_numbers.h"
#include "reference/sql_dialect.h"

namespace reference {
namespace {

bool IsDigit(char32_t key) {
  return key >= U'0' && key <= U'9';
}

bool IsLetter(char32_t key) {
  return (key >= U'A' && key <= U'Z') || (key >= U'a' && key <= U'z');
}

// What names are written with besides letters.
constexpr std::u32string_view kNameMarks = U" '-";
constexpr std::u32string_view kPastedNameMarks = U" '-.";

}  // namespace

std::string OfficeUtilities::GetCodeValue(const std::string& table, const std::string& code) {
  const auto* const found = FindCode(table, code);
  return found == nullptr || !found->is_current ? code : found->value;
}

std::string OfficeUtilities::GetCodeDescription(const std::string& table, const std::string& code) {
  const auto* const found = FindCode(table, code);
  return found == nullptr ? "" : found->description;
}

std::string OfficeUtilities::GetOfficerName(const std::string& officer_id) {
  ForgetTablesOfYesterday();
  if (!officers_) officers_ = ReadOfficers();
  const auto found = officers_->find(platform::UpperCase(platform::Trim(officer_id)));
  return found == officers_->end() ? "" : found->second;
}

std::string OfficeUtilities::SqlQuote(std::string_view text) {
  return SqlQuoted(text);
}

void OfficeUtilities::MarkFieldInvalid(platform::Control& control) {
  control.SetMarkedInvalid(true);
}

void OfficeUtilities::MarkFieldValid(platform::Control& control) {
  control.SetMarkedInvalid(false);
}

platform::Utilities::FormNumberVerdict OfficeUtilities::ValidateFormNumber(const std::string& form_type,
                                                                           const std::string& form_number) {
  return JudgeFormNumber(platform::Trim(form_type), form_number);
}

bool OfficeUtilities::AllowFormNumberKey(const std::string& form_type, char32_t key,
                                         const platform::TextField& field) {
  return AllowsFormNumberKey(platform::Trim(form_type), key, field.text());
}

bool OfficeUtilities::AllowBatchNumberKey(char32_t key) {
  return IsDigit(key);
}

bool OfficeUtilities::AllowZipKey(char32_t key) {
  return IsDigit(key) || IsLetter(key) || key == U'-';
}

bool OfficeUtilities::IsControlKey(char32_t key) {
  constexpr char32_t kDelete = 0x7F;
  return key < U' ' || key == kDelete || kNameMarks.find(key) != std::u32string_view::npos;
}

bool OfficeUtilities::IsAlphaText(std::string_view text) {
  return platform::HoldsOnlyLetters(text, kPastedNameMarks);
}

void OfficeUtilities::RegisterForm(platform::Form& form) {
  registered_[&form] = form.Hidden.Connect([this, &form] { registered_.erase(&form); });
}

bool OfficeUtilities::IsAuthorized(std::string_view right) {
  return rights_.Holds(settings_.UserId(), right);
}

bool OfficeUtilities::ValidateTroop(const std::string& troop) {
  return patrol_.HasTroop(platform::Trim(troop));
}

bool OfficeUtilities::ValidateTroopDistrict(const std::string& troop, const std::string& district) {
  return patrol_.HasDistrict(platform::Trim(troop), platform::Trim(district));
}

void OfficeUtilities::ForgetTablesOfYesterday() {
  const auto today = clock_.Today();
  if (today == tables_day_) return;
  tables_.clear();
  officers_.reset();
  tables_day_ = today;
}

const OfficeUtilities::Code* OfficeUtilities::FindCode(const std::string& table, const std::string& code) {
  ForgetTablesOfYesterday();
  const auto name = platform::UpperCase(table);
  auto known = tables_.find(name);
  if (known == tables_.end()) known = tables_.emplace(name, ReadTable(table)).first;
  const auto found = known->second.find(platform::UpperCase(code));
  return found == known->second.end() ? nullptr : &found->second;
}

OfficeUtilities::CodeTable OfficeUtilities::ReadTable(const std::string& table) {
  const auto region = platform::UpperCase(platform::Trim(settings_.Region()));
  const auto rows = reference_.Select(
      R"(SELECT CD_TBL_CD, CD_TBL_DES, ADTL_INFO_TXT, (END_DT IS NULL OR END_DT >= date()) AS IS_CURRENT
         FROM FLS_CODE WHERE REGION = )" +
      SqlQuoted(region) + " AND CD_TBL_ID = " + SqlQuoted(table) +
      " AND EFCTV_DT <= date() ORDER BY IS_CURRENT, EFCTV_DT");
  CodeTable codes;
  for (std::size_t row = 0; row < rows->RecordCount(); ++row) {
    // Of entries of one code the one that took effect last holds, a current one before those that ended.
    codes[platform::UpperCase(rows->Text(row, "CD_TBL_CD"))] = {rows->Text(row, "CD_TBL_DES"),
                                                                rows->Text(row, "ADTL_INFO_TXT"),
                                                                rows->Text(row, "IS_CURRENT") == "1"};
  }
  return codes;
}

OfficeUtilities::OfficerNames OfficeUtilities::ReadOfficers() {
  const auto rows = reference_.Select("SELECT OFCR_ID, OFCR_NM FROM FLS_OFFICER");
  OfficerNames names;
  for (std::size_t row = 0; row < rows->RecordCount(); ++row) {
    names[platform::UpperCase(rows->Text(row, "OFCR_ID"))] = rows->Text(row, "OFCR_NM");
  }
  return names;
}

}  // namespace reference
