#include <gmock/gmock.h>

#include "tests/end_to_end/changed_template.h"
#include "tests/end_to_end/prepared_office.h"

namespace tests {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

/// New versions of the letter that confirms a registration, as an office brings them.
class TemplateVersions : public PreparedOffice {
 protected:
  /// Enters a version in the catalogue that is in force from today on.
  void GivenVersion(const std::string& document) {
    const auto run = RunShell(
        "sqlite3 " + Quoted((data_ / "reference.db").string()) +
        " \"INSERT INTO FLS_LTR_TEMPLATE SELECT REGION, LTR_TYP_ID, '" + document +
        "', '2024-12-01 10.00.00', '2024-12-01', NULL FROM FLS_LTR_TEMPLATE WHERE LTR_TYP_ID = '101'\"");
    ASSERT_EQ(run.status, 0) << run.err;
  }
  static std::size_t Times(const std::string& text, const std::string& word) {
    std::size_t times = 0;
    for (auto place = text.find(word); place != std::string::npos; place = text.find(word, place + 1))
      ++times;
    return times;
  }
};

TEST_F(TemplateVersions, WithErrorsMakeNoNewLetterAndTheLetterTypeSaysWhy) {
  WriteTemplateWithError(data_ / "server/templates/REG101_2412.docx");
  GivenVersion("REG101_2412.docx");
  const auto why = AllOf(HasSubstr("\"REG101_2412.docx\" has an error, of the bookmark \"CUSTOMR_NAME\""),
                         HasSubstr("did you mean \"CUSTOMER_NAME\"?"), HasSubstr("--type 101\""));
  const auto types = Letters("types", {});
  EXPECT_THAT(types.out, why);
  EXPECT_EQ(Times(types.err, "\"REG101_2412.docx\" has an error"), 1u) << "when it came: " << types.err;

  const auto letter = PrintLetterFor("100001");
  EXPECT_EQ(letter.status, 1);
  EXPECT_THAT(letter.err, AllOf(HasSubstr("No letter was made. The template"), why,
                                HasSubstr("No template is available for print.")));
  EXPECT_EQ(Times(letter.err, "\"REG101_2412.docx\" has an error"), 1u)
      << "it was here already: " << letter.err;
  EXPECT_EQ(History("SEQ_NBR"), "");
  EXPECT_EQ(Letters("context", {"--type", "101", "--customer", "100001"}).status, 0) << "to mend it with";
  EXPECT_EQ(Letters("letter", {"--type", "102", "--customer", "100001", "--print"}).status, 0);

  // The fields may be what is wrong: no new file is needed then.
  RunShell(
      "sqlite3 " + Quoted((data_ / "server/server.db").string()) +
      " \"CREATE TABLE one AS SELECT * FROM letter_field WHERE FLD_NM = 'CUSTOMER_NAME' AND LTR_TYP_ID = "
      "'101'; UPDATE one SET FLD_NM = 'CUSTOMR_NAME', FLD_ORD = 1000; INSERT INTO letter_field SELECT * "
      "FROM one\"");
  EXPECT_EQ(PrintLetterFor("100001").status, 0);
}

}  // namespace
}  // namespace tests
