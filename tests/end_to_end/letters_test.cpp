#include <gmock/gmock.h>

#include <thread>

#include "tests/end_to_end/prepared_office.h"

namespace tests {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

TEST_F(PreparedOffice, ALetterIsPrintedAndRecordedFromCustomerToPage) {
  const auto letter = PrintLetterFor("100001");
  ASSERT_EQ(letter.status, 0) << letter.err;
  ASSERT_THAT(Printed(), SizeIs(1));
  EXPECT_THAT(letter.out, HasSubstr("Printed: " + Printed().front().string()));
  const auto text = PdfText(Printed().front());
  EXPECT_THAT(text, HasSubstr("Your motor fuel tax registration is confirmed"));
  EXPECT_THAT(text, HasSubstr("100001"));
  EXPECT_THAT(text, Not(HasSubstr("[Customer")));  // a bookmark that was not filled shows its own wording
  EXPECT_EQ(History("LTR_TYP_ID || CUST_ID || SYS_RFRNC_CD || DCMT_FILE_TXT"),
            "101100001OREG101_2401.docx\n");
  EXPECT_THAT(FilesIn(data_ / "work"), IsEmpty());
}

TEST_F(PreparedOffice, ADocumentsLetterTakesItsNumberApartAndShowsTheTaxPeriods) {
  const std::string number = "3100004-9";
  ServerSql("UPDATE tax_period SET DUE_DT = '2026-09-30'");
  const auto letter = Letters("letter", {"--type", "110", "--form-type", "C", "--form", number, "--print"});
  ASSERT_EQ(letter.status, 0) << letter.err;
  EXPECT_THAT(PdfText(Printed().front()), HasSubstr(number));
  EXPECT_THAT(PdfText(Printed().front()), HasSubstr("September 30, 2026 ")) << "the longest day, on one line";
  const auto first = letter.err.find("Checking templates.");
  EXPECT_EQ(letter.err.find("Checking templates.", first + 1), std::string::npos) << "one line a step";
  EXPECT_EQ(History("FORM_NBR || '-' || FORM_CK_DGT_NBR || FORM_TYP_CD"), number + "C\n");
}

TEST_F(PreparedOffice, APreviewAloneRecordsNothing) {
  const auto letter = Letters("letter", {"--type", "101", "--customer", "100001"});
  EXPECT_EQ(letter.status, 0) << letter.err;
  EXPECT_THAT(Printed(), IsEmpty());
  EXPECT_EQ(History("SEQ_NBR"), "");
}

TEST_F(PreparedOffice, ALetterIsSavedAsWhatItsNameSays) {
  const auto docx = (data_ / "letter.docx").string();
  const auto pdf = (data_ / "letter.pdf").string();
  EXPECT_EQ(Letters("letter", {"--type", "101", "--customer", "100001", "--save", docx}).status, 0);
  EXPECT_EQ(Letters("letter", {"--type", "101", "--customer", "100001", "--save", pdf}).status, 0);
  EXPECT_THAT(ReadFile(docx), testing::StartsWith("PK"));
  EXPECT_THAT(PdfText(pdf), HasSubstr("100001"));
}

TEST_F(PreparedOffice, ExplainsWhatTheServerSentForALetter) {
  const auto explain = [this](const char* customer) {
    return Letters("letter", {"--type", "101", "--customer", customer, "--explain"});
  };
  ServerSql("UPDATE customer SET ACCNT_NBR = NULL WHERE CUST_ID = '100002'");
  const auto in_error = explain("100002");
  EXPECT_EQ(in_error.status, 1);
  EXPECT_THAT(in_error.out, testing::MatchesRegex("Letter Information\n"
                                                  "  Num of Errors: +1\n"
                                                  "  Address Status: +The letter goes to [^\n]*\n"
                                                  "  \\[>\\] XML_CONTEXT\n"
                                                  "    \\[x\\] Fuel tax account\n"
                                                  "        Error: +[^\n]*\n"
                                                  "[^\n]*\n"));
  EXPECT_THAT(in_error.err, HasSubstr("The letter is not made: its data are in error (1)."));

  const auto no_address = explain("100018");
  EXPECT_EQ(no_address.status, 1);
  EXPECT_THAT(no_address.out, HasSubstr("[x] Customer address"));

  const auto correct = explain("100001");
  EXPECT_EQ(correct.status, 0) << correct.err;
  EXPECT_EQ(correct.out, "No field of the letter is in error.\n");
  RunShell("sed -i 's/^System.DontPrint=N/System\\\\DontPrint=Y/' " +
           Quoted((data_ / "settings.ini").string()));
  EXPECT_THAT(explain("100001").out,
              testing::AllOf(HasSubstr("[ok] Customer name\n"), HasSubstr("Prairie Lantern Fuel Supply LLC"),
                             HasSubstr("Num of Errors:      0\n")));
  EXPECT_EQ(History("CUST_ID"), "");
}

TEST_F(PreparedOffice, WorksWithoutHomeAndInTheCLocale) {
  const auto letter = Letters("letter", {"--type", "101", "--customer", "100001", "--print"},
                              "env -i PATH=/usr/bin:/bin LC_ALL=C");
  EXPECT_EQ(letter.status, 0) << letter.err;
  EXPECT_THAT(Printed(), SizeIs(1));
}

TEST_F(PreparedOffice, TwoProgramsWorkOnOneDataFolderAtTheSameTime) {
  Outcome first;
  Outcome second;
  {
    const std::jthread one([&] { first = PrintLetterFor("100001"); });
    const std::jthread two([&] { second = PrintLetterFor("100002"); });
  }
  EXPECT_EQ(first.status, 0) << first.err;
  EXPECT_EQ(second.status, 0) << second.err;
  EXPECT_THAT(Printed(), SizeIs(2));
}

TEST_F(PreparedOffice, ListsCustomersAndTypesForPeopleAndPrograms) {
  EXPECT_THAT(Letters("customers", {}).out, HasSubstr("100001"));
  EXPECT_THAT(Letters("customers", {"--json", "--find", "100002"}).out, HasSubstr("\"id\": \"100002\""));
  const auto types = Letters("types", {});
  EXPECT_THAT(types.out, HasSubstr("Certificate of Tax Liability"));
  EXPECT_THAT(Letters("types", {"--json"}).out, HasSubstr("\"type\": \"109\""));
}

}  // namespace
}  // namespace tests
