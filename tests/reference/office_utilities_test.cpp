#include "reference/office_utilities.h"

#include <gmock/gmock.h>

#include "platform/controls/text_field.h"
#include "reference/form_numbers.h"
#include "tests/fakes/fake_rights.h"
#include "tests/fakes/fake_settings.h"
#include "tests/reference/reference_world.h"

namespace reference_tests {
namespace {

class OfficeUtilities : public ReferenceWorld {
 protected:
  OfficeUtilities() {
    settings.region = " k1 ";
    GivenRow("letters.tsv", "K1|110|Certificate|O");
    GivenCode("REFDOCTYP", "C", "Assessment");
    GivenCode("LTRINPUT", "110", "Certificate", "C");
    GivenCode("LTRACTION", "VLT", "View Letter");
    GivenCode("LTRPRNTCD", "F", "Failed", "", "2020-01-01", "2025-12-31");
    GivenCode("LTRPRNTCD", "F", "Printing Failed", "", "2026-01-01");
    GivenCode("LTRPRNTCD", "X", "Held", "V", "2020-01-01", "2022-12-31");
    GivenCode("LTRPRNTCD", "Y", "To Come", "", "2027-01-01");
  }
  reference::OfficeUtilities& Utilities() {
    if (!utilities_)
      utilities_ = std::make_unique<reference::OfficeUtilities>(Database(), settings, rights, clock);
    return *utilities_;
  }

  fakes::FakeSettings settings;
  fakes::FakeRights rights;

 private:
  std::unique_ptr<reference::OfficeUtilities> utilities_;
};

TEST_F(OfficeUtilities, LookUpTheCodesOfToday) {
  EXPECT_EQ(Utilities().GetCodeValue("LTRINPUT", "110"), "C");
  EXPECT_EQ(Utilities().GetCodeValue("LTRINPUT", "101"), "101") << "no entry: the code itself";
  EXPECT_EQ(Utilities().GetCodeValue("LTRACTION", "VLT"), "") << "an entry without a value";
  EXPECT_EQ(Utilities().GetCodeDescription("ltrprntcd", "f"), "Printing Failed");
  EXPECT_EQ(Utilities().GetCodeDescription("LTRPRNTCD", "X"), "Held") << "old letters have it";
  EXPECT_EQ(Utilities().GetCodeValue("LTRPRNTCD", "X"), "X");
  EXPECT_EQ(Utilities().GetCodeDescription("LTRPRNTCD", "Y"), "") << "not yet";
  EXPECT_EQ(Utilities().GetCodeDescription("IT'S NO TABLE", "X"), "");
  clock.SetToday(platform::Date{std::chrono::year(2022) / 12 / 31});
  EXPECT_EQ(Utilities().GetCodeDescription("LTRPRNTCD", "X"), "Held");
  EXPECT_EQ(Utilities().GetCodeDescription("LTRPRNTCD", "F"), "Failed");
}

TEST_F(OfficeUtilities, KnowTheOfficers) {
  GivenRow("officers.tsv", "DEMO01|Ann Lee");
  EXPECT_EQ(Utilities().GetOfficerName(" demo01 "), "Ann Lee");
  EXPECT_EQ(Utilities().GetOfficerName("DEMO02"), "");
}

TEST_F(OfficeUtilities, QuoteTextsAndMarkFields) {
  EXPECT_EQ(Utilities().SqlQuote("O'Hara's"), "'O''Hara''s'");
  EXPECT_EQ(Utilities().SqlQuote(""), "''");
  platform::TextField field;
  Utilities().MarkFieldInvalid(field);
  EXPECT_TRUE(field.marked_invalid());
  Utilities().MarkFieldValid(field);
  EXPECT_FALSE(field.marked_invalid());
}

TEST_F(OfficeUtilities, KnowTheTroopsAndDistrictsThatPatrolACounty) {
  GivenRow("counties.tsv", "1|Aldermoor|Alder Point|871|A|1");
  GivenRow("counties.tsv", "2|Ashgrove|Grove City|872|A|2");
  GivenRow("counties.tsv", "7|Dunmarsh|Dunmore|877|B|12");
  struct Case {
    const char* troop;
    const char* district;  // "" where only the troop is asked for
    bool known;
  };
  const Case cases[] = {
      {"A", "", true},   {"B", "", true},    {"C", "", false},  {"", "", false},    {"a", "", false},
      {" A ", "", true}, {"A", "2", true},   {"B", "12", true}, {"B", "1", false},  {"A", "12", false},
      {"C", "1", false}, {"A", " 1 ", true}, {"", "1", false},  {"A", "01", false},
  };
  for (const auto& [troop, district, known] : cases) {
    const bool only_troop = *district == '\0';
    EXPECT_EQ(
        only_troop ? Utilities().ValidateTroop(troop) : Utilities().ValidateTroopDistrict(troop, district),
        known)
        << troop << "/" << district;
  }
}

TEST_F(OfficeUtilities, TakeTheKeysOfEachField) {
  struct Case {
    const char* form_type;
    const char* text;
    const char32_t* taken;
    const char32_t* refused;
  };
  const Case cases[] = {
      {"C", "", U"0123456789-", U"XxA .\u0663\u00e9"},
      {" R ", "1234567-", U"07X", U"-xA"},
      {"", "1234567", U"0-", U"X"},
      {"Q", "", U"", U"0-X"},
  };
  platform::TextField field;
  for (const auto& [form_type, text, taken, refused] : cases) {
    field.SetText(text);
    for (const char32_t key : std::u32string_view(taken))
      EXPECT_TRUE(Utilities().AllowFormNumberKey(form_type, key, field))
          << form_type << text << " " << int(key);
    for (const char32_t key : std::u32string_view(refused))
      EXPECT_FALSE(Utilities().AllowFormNumberKey(form_type, key, field))
          << form_type << text << " " << int(key);
  }
  for (const char32_t key : std::u32string_view(U"09AZaz-"))
    EXPECT_TRUE(Utilities().AllowZipKey(key)) << int(key);
  for (const char32_t key : std::u32string_view(U" ./@[`{\u00c4")) {
    EXPECT_FALSE(Utilities().AllowZipKey(key)) << int(key);
    EXPECT_FALSE(Utilities().AllowBatchNumberKey(key)) << int(key);
  }
  EXPECT_TRUE(Utilities().AllowBatchNumberKey(U'0'));
  EXPECT_FALSE(Utilities().AllowBatchNumberKey(U'A'));
}

TEST(FormNumbers, AreJudgedByTheRuleOfTheirType) {
  struct Case {
    const char* type;
    const char* number;
    const char* complaint;  // "" when the number is good
  };
  const Case cases[] = {
      {"C", "1234567", ""},
      {"C", "1234567-7", ""},
      {"W", "0000000-0", ""},
      {"M", "1000003-X", ""},
      {"", "1234567", ""},
      {"R", "1234567-7", ""},
      {"V", "1234567", "needs its check digit"},
      {"R", "1234567", "needs its check digit"},
      {"C", "1234567-", "Check digit \"\" does not belong"},
      {"C", "1234567-8", "Check digit \"8\" does not belong to form number \"1234567\""},
      {"C", "1234567-77", "Check digit \"77\" does not belong"},
      {"M", "1000003-x", "Check digit \"x\" does not belong"},
      {"C", "31000184", "\"31000184\" needs a dash before its check digit: \"3100018-4\""},
      {"R", "1000003X", "needs a dash before its check digit: \"1000003-X\""},
      {"C", "123456789", "\"123456789\" must have seven digits"},
      {"C", "123456", "must have seven digits"},
      {"C", "123A567", "must have seven digits"},
      {"C", " 1234567", "must have seven digits"},
      {"C", "", "must have seven digits"},
      {"C", "-7", "must have seven digits"},
      {"Q", "1234567", "There is no form type \"Q\""},
  };
  for (const auto& [type, number, complaint] : cases) {
    const auto verdict = reference::JudgeFormNumber(type, number);
    EXPECT_EQ(verdict.valid, *complaint == '\0') << type << " " << number;
    EXPECT_THAT(verdict.text, testing::HasSubstr(complaint)) << type << " " << number;
    EXPECT_EQ(verdict.valid, verdict.text.empty()) << type << " " << number;
  }
}

TEST_F(OfficeUtilities, TakeWhatNamesAreWrittenWith) {
  for (const auto key : {U'\b', U'\x7F', U' ', U'\'', U'-'})
    EXPECT_TRUE(Utilities().IsControlKey(key)) << static_cast<int>(key);
  EXPECT_FALSE(Utilities().IsControlKey(U'.'));
  EXPECT_FALSE(Utilities().IsControlKey(U'a'));
  for (const auto* name : {"", "O'Brien", "Zoë Smith-Jones", "e\u0301", "St. John"})
    EXPECT_TRUE(Utilities().IsAlphaText(name)) << name;
  for (const auto* text : {"Box 12", "a\r\nb", "%", "a\tb", "\xFF"})
    EXPECT_FALSE(Utilities().IsAlphaText(text)) << text;
}

}  // namespace
}  // namespace reference_tests
