// What both sides of the wall know alike, in literal values: stored letters and other programs hold to them.

#include <gmock/gmock.h>

#include <chrono>
#include <string>

#include "platform/agreed/field_flags.h"
#include "platform/agreed/field_names.h"
#include "platform/agreed/form_numbers.h"
#include "platform/agreed/letter_record.h"
#include "platform/agreed/letter_types.h"
#include "platform/agreed/requests.h"
#include "platform/agreed/saved_letter.h"
#include "platform/agreed/template_versions.h"
#include "platform/failure.h"
#include "platform/value.h"
#include "platform/xml/xml.h"
#include "tests/support/failing.h"
#include "tests/support/field_flags.h"

namespace platform {
namespace {

using testing::HasSubstr;

TEST(FieldFlags, HaveTheirBits) {
  for (const auto& flag : tests::kFieldFlags) EXPECT_EQ(flag.bits, 1U << flag.bit) << flag.name;
}

TEST(FieldFlags, StandInTheirGroups) {
  EXPECT_EQ(field_state::kTypes, 0xFFU);
  EXPECT_EQ(field_state::kAttributes, 0x300700U);
  EXPECT_EQ(field_state::kStates, 0x6F800U);
  EXPECT_EQ(field_state::kSummaries, 0x1C00000U);
  EXPECT_EQ(field_state::kTypesThatMayBeEmpty, 0x59U);
  EXPECT_EQ(field_address::kRequirements, 0x1FU);
  EXPECT_EQ(field_address::kAttributes, 0x380U);
  EXPECT_EQ(field_address::kMailWarnings, 0xAA800U);
  EXPECT_EQ(field_address::kResidentialWarnings, 0x155000U);
  EXPECT_EQ(field_address::kAllWarnings, 0x1FF800U);
  EXPECT_EQ(field_address::kErrors, 0x3E000000U);
}

TEST(FieldFlags, AreOneToEightHexadecimalDigitsOfEitherCase) {
  struct {
    const char* text;
    FlagWord word;
    const char* written;
  } const cases[] = {{"0", 0, "0"},
                     {"1a", 0x1A, "1A"},
                     {"0000001A", 0x1A, "1A"},
                     {"aBcDeF09", 0xABCDEF09, "ABCDEF09"},
                     {"80000000", 0x80000000, "80000000"}};
  for (const auto& c : cases) {
    EXPECT_EQ(ParseFlagWord(c.text), c.word) << c.text;
    EXPECT_EQ(FlagText(c.word), c.written);
  }
}

TEST(FieldFlags, ThatAreNoneAreRefusedWithTheirPlace) {
  EXPECT_EQ(ReadFlagWord(XmlDocument("NAME").Root(), "Err"), 0U);
  for (const std::string text :
       {"", " ", "123456789", "000000001", "0x1", "&H1", "-1", "+1", " 1", "1 ", "G", "1G", "1.0", "٣"}) {
    SCOPED_TRACE("\"" + text + "\"");
    EXPECT_EQ(ParseFlagWord(text), std::nullopt);
    XmlDocument field("NAME");
    field.Root().SetAttribute("Err", text);
    EXPECT_THAT([&] { ReadFlagWord(field.Root(), "Err"); },
                tests::Fails(Failure::Kind::kDamaged,
                             HasSubstr("\"" + text + "\" in attribute Err of element NAME")));
  }
}

TEST(FieldNames, SayWhichFieldABookmarkRepeats) {
  struct {
    const char* bookmark;
    const char* field;
  } const cases[] = {{"NAME__1", "NAME"}, {"NAME__12", "NAME"}, {"A__B__2", "A__B"}, {"NAME___1", "NAME_"},
                     {"NAME", ""},        {"NAME_1", ""},       {"NAME__", ""},      {"NAME__X", ""},
                     {"NAME__1X", ""},    {"A__2__B", ""}};
  for (const auto& c : cases) {
    EXPECT_EQ(RepeatedName(c.bookmark), c.field) << c.bookmark;
    EXPECT_EQ(IsRepeat(c.bookmark), *c.field != '\0') << c.bookmark;
  }
}

TEST(FieldNames, SayWhichFieldIsAParagraph) {
  for (const auto* name : {"PARA_ONE", "MYPARA_X", "PARA_FREE_TEXT"})
    EXPECT_TRUE(IsParagraphField(name)) << name;
  for (const auto* name : {"para_one", "PARAONE", "A", ""}) EXPECT_FALSE(IsParagraphField(name)) << name;
}

TEST(FormNumbers, HaveACheckDigit) {
  EXPECT_EQ(CheckDigit("1234567"), '7');
  EXPECT_EQ(CheckDigit("3100005"), 'X');
  EXPECT_EQ(CheckDigit("0000000"), '0');
}

TEST(FormNumbers, ACheckDigitCatchesEveryWrongDigitAndEveryExchangeOfNeighbours) {
  const std::string number = "1934285";
  const char digit = CheckDigit(number);
  for (std::size_t place = 0; place < number.size(); ++place) {
    for (char wrong = '0'; wrong <= '9'; ++wrong) {
      auto typed = number;
      typed[place] = wrong;
      EXPECT_EQ(CheckDigit(typed) == digit, typed == number) << typed;
    }
    if (place == 0) continue;
    auto exchanged = number;
    std::swap(exchanged[place - 1], exchanged[place]);
    EXPECT_NE(CheckDigit(exchanged), digit) << exchanged;
  }
}

TEST(FormNumbers, AreOfSixTypes) {
  for (const auto* type : {"C", "W", "M", "O"}) EXPECT_FALSE(FindFormType(type)->needs_check_digit) << type;
  for (const auto* type : {"V", "R"}) EXPECT_TRUE(FindFormType(type)->needs_check_digit) << type;
  for (const auto* type : {"", "c", "P", "CW"}) EXPECT_EQ(FindFormType(type), nullptr) << type;
  EXPECT_EQ(kFormTypes.size(), 6U);
}

TEST(Requests, HaveTheirCodes) {
  EXPECT_EQ(message_type::kCustomer, 7);
  EXPECT_EQ(message_type::kCountPrinted, 78);
  EXPECT_EQ(message_type::kSearch, 79);
  EXPECT_EQ(message_type::kChange, 82);
  EXPECT_EQ(message_type::kFetch, 83);
  EXPECT_EQ(KeyNamed(request_key::kFetchContext), "key:FetchContext");
  EXPECT_EQ(KeyWithBlank(request_key::kLetterType), "key: LTR_TYP_ID");
}

TEST(LetterRecords, FailedWithTwoStatusesAndAskForTheServersTime) {
  for (const auto* status : {"F", "R"}) EXPECT_TRUE(print_status::IsFailure(status)) << status;
  for (const auto* status : {"P", "S", "W", "M", "V", "E", "f", ""})
    EXPECT_FALSE(print_status::IsFailure(status)) << status;
  EXPECT_EQ(kStatusForTheServer, "F");
  EXPECT_EQ(ParseTimestamp(kTimeForTheServer),
            std::chrono::local_days(std::chrono::year(1900) / 1 / 1) + std::chrono::seconds(3661));
}

TEST(TemplateInForce, IsTheNewestByItsTimeStampWhicheverBeganLast) {
  const TemplateVersion versions[] = {
      {"past.docx", "2019-01-01 08.00.00", "2019-01-01", "2024-06-30"},
      {"corrected.docx", "2024-09-01 08.00.00", "2024-07-01", ""},
      {"special.docx", "2024-08-01 08.00.00", "2024-08-15", "2025-12-31"},
  };
  struct {
    const char* day;
    const char* file;
  } const cases[] = {{"2018-12-31", ""},
                     {"2019-01-01", "past.docx"},
                     {"2024-06-30", "past.docx"},
                     {"2024-07-01", "corrected.docx"},
                     {"2025-01-01", "corrected.docx"}};
  for (const auto& c : cases) {
    const auto* found = TemplateInForce(versions, c.day);
    EXPECT_EQ(found == nullptr ? "" : found->file, c.file) << c.day;
  }
}

TEST(LetterTypes, AreMadeInOneOfFourPlaces) {
  EXPECT_THAT(made_where::kAll, testing::ElementsAre("O", "B", "S", "E"));
  EXPECT_FALSE(made_where::IsKnown("o"));
  EXPECT_STREQ(letter_type::kTaxLiability, "110");
  EXPECT_STREQ(letter_type::kTaxWarrant, "109");
}

TEST(SavedLetters, AreDocumentsOrPdfs) {
  for (const auto* ending : {".docx", "docx", ".DOCX"})
    EXPECT_EQ(SavedAsOf(ending), SavedAs::kDocument) << ending;
  for (const auto* ending : {".pdf", "pdf", ".Pdf"}) EXPECT_EQ(SavedAsOf(ending), SavedAs::kPdf) << ending;
  for (const auto* ending : {"", ".", ".doc", "..pdf", "docx.pdf", ".pdf "})
    EXPECT_EQ(SavedAsOf(ending), std::nullopt) << ending;
}

}  // namespace
}  // namespace platform
