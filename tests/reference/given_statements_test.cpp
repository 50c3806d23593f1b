#include <string>

#include <gmock/gmock.h>

#include "composition/pick_list_source.h"
#include "platform/failure.h"
#include "platform/text.h"
#include "tests/reference/reference_world.h"
#include "tests/support/failing.h"
#include "workspace/letters/statements.h"

namespace reference_tests {
namespace {

using platform::ReplaceAll;
using testing::ElementsAre;

class GivenStatements : public ReferenceWorld {
 protected:
  void GivenLetter(const std::string& type, const std::string& name, const std::string& indicator = "O") {
    GivenRow("letters.tsv", "K1|" + type + "|" + name + "|" + indicator);
  }
  void GivenTemplate(const std::string& type, const std::string& name, const std::string& version,
                     const std::string& from, const std::string& to = "") {
    GivenRow("templates.tsv", "K1|" + type + "|" + name + "|" + version + "|" + from + "|" + to);
  }
  /// The template whose row comes first, as the workspace takes it; "" when there is none.
  std::string TemplateOn(const std::string& day, const std::string& type = "110") {
    const auto names = Column(Filled(workspace::kTemplateOfToday, day, type), "DCMT_NM");
    return names.empty() ? "" : names.front();
  }
  std::vector<std::string> TemplatesToHave(const std::string& day) {
    return Column(Filled(workspace::kAllTemplates, day), "DCMT_NM");
  }
  std::vector<std::string> Offered(const char* code_type, const char* column = "CD_TBL_CD") {
    return Column(composition::PickListStatement(code_type, "k1"), column);
  }
  static std::string Filled(std::string_view statement, std::string_view day, std::string_view type = "") {
    const auto quoted = [](std::string_view text) { return "'" + std::string(text) + "'"; };
    return ReplaceAll(ReplaceAll(ReplaceAll(statement, "{R}", quoted("K1")), "{T}", day), "{L}",
                      quoted(type));
  }
};

TEST_F(GivenStatements, TheTemplateOfADayIsTheNewestOneInForce) {
  GivenLetter("110", "Certificate");
  GivenTemplate("110", "past.docx", "2019-01-01 08.00.00", "2019-01-01", "2024-06-30");
  GivenTemplate("110", "open.docx", "2024-06-01 08.00.00", "2024-07-01");
  GivenTemplate("110", "special.docx", "2025-03-01 08.00.00", "2025-04-01", "2025-12-31");
  GivenTemplate("110", "future.docx", "2026-01-01 08.00.00", "2027-01-01");
  struct Case {
    const char* day;
    const char* expected;
  };
  const Case cases[] = {
      {"2018-12-31", ""},
      {"2019-01-01", "past.docx"},
      {"2024-06-30", "past.docx"},
      {"2024-07-01", "open.docx"},
      {"2025-03-31", "open.docx"},
      {"2025-04-01", "special.docx"},
      {"2025-12-31", "special.docx"},
      {"2026-01-01", "open.docx"},
      {"2027-01-01", "future.docx"},
  };
  for (const auto& [day, expected] : cases) EXPECT_EQ(TemplateOn(day), expected) << day;
  EXPECT_EQ(TemplateOn("2025-05-01", "109"), "");
}

TEST_F(GivenStatements, AnOldSpecialVersionGivesWayToANewerOpenOne) {
  GivenLetter("110", "Certificate");
  GivenTemplate("110", "special.docx", "2024-01-01 08.00.00", "2024-01-01", "2027-12-31");
  GivenTemplate("110", "open.docx", "2025-01-01 08.00.00", "2025-01-01");
  EXPECT_EQ(TemplateOn("2024-06-01"), "special.docx");
  EXPECT_EQ(TemplateOn("2026-06-01"), "open.docx");
}

TEST_F(GivenStatements, TemplatesAreFetchedInAdvanceAndInOrder) {
  GivenLetter("110", "Certificate");
  GivenLetter("109", "Warrant");
  GivenLetter("116", "Permit");
  GivenTemplate("110", "past.docx", "2019-01-01 08.00.00", "2019-01-01", "2024-06-30");
  GivenTemplate("110", "now.docx", "2024-06-01 08.00.00", "2024-07-01", "2026-12-31");
  GivenTemplate("110", "future.docx", "2026-01-01 08.00.00", "2027-01-01");
  GivenTemplate("109", "warrant.docx", "2024-01-01 08.00.00", "2024-01-01");
  EXPECT_THAT(TemplatesToHave("2026-11-22"), ElementsAre("warrant.docx", "now.docx", "future.docx"));
  EXPECT_THAT(TemplatesToHave("2027-01-01"), ElementsAre("warrant.docx", "future.docx"));
  EXPECT_THAT(Column(Filled(workspace::kTemplateVersions, "", "110"), "DCMT_NM"),
              ElementsAre("past.docx", "now.docx", "future.docx"));
}

TEST_F(GivenStatements, LettersComeByNameAfterOneBlankRow) {
  GivenLetter("110", "Certificate");
  GivenLetter("104", "zoning notice", "B");
  GivenLetter("118", "Cover Sheet", "S");
  GivenLetter("115", "Bulletin", "E");
  GivenLetter("109", "Warrant");
  GivenRow("letters.tsv", "K2|110|Another Region's|O");
  EXPECT_THAT(Offered("LETTERS", "CD_TBL_DES"),
              ElementsAre("", "Bulletin", "Certificate", "Warrant", "zoning notice"));
  EXPECT_THAT(Offered("Letters", "LTR_IND"), ElementsAre("", "E", "O", "O", "B"));
  EXPECT_THAT(Offered("ONLINE"), ElementsAre("", "110", "109"));
  EXPECT_THAT(Offered("batch"), ElementsAre("", "104"));
  EXPECT_THAT(Offered("TEMPLATES"), ElementsAre("", "110", "118", "109", "104"));
}

TEST_F(GivenStatements, OnlyTheCodesOfTodayAreOffered) {
  GivenCode("REFDOCTYP", "C", "Assessment", "", "2026-11-22");
  GivenCode("REFDOCTYP", "M", "Return", "", "2020-01-01", "2026-11-22");
  GivenCode("REFDOCTYP", "P", "Permit", "", "2020-01-01", "2026-11-21");
  GivenCode("REFDOCTYP", "Z", "Zone Pass", "", "2026-11-23");
  GivenCode("LTRBATCH", "BNK", "None");
  EXPECT_THAT(Offered("refdoctyp"), ElementsAre("", "C", "M"));
  const auto rows = Database().Select(composition::PickListStatement("REFDOCTYP", "K1"));
  EXPECT_EQ(rows->columns().size(), 14U);
  clock.SetToday(platform::Date{std::chrono::year(2026) / 11 / 23});
  EXPECT_THAT(Offered("REFDOCTYP"), ElementsAre("", "C", "Z"));
}

TEST_F(GivenStatements, ARefusedStatementSaysWhatTheDatabaseSays) {
  EXPECT_THAT([&] { Database().Select("select NOTHING from FLS_LETTER"); },
              tests::Fails(platform::Failure::Kind::kRefused, testing::HasSubstr("NOTHING")));
  EXPECT_THROW(Database().Select("select 1; delete from FLS_LETTER"), platform::Failure);
  EXPECT_EQ(Database().Select("select count(*) as N from FLS_LETTER")->Get("n").AsInteger(), 0);
}

}  // namespace
}  // namespace reference_tests
