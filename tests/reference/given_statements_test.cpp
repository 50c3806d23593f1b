#include <string>

#include <gmock/gmock.h>

#include "platform/failure.h"
#include "platform/text.h"
#include "tests/reference/reference_world.h"

namespace reference_tests {
namespace {

using platform::ReplaceAll;
using testing::ElementsAre;

// The statements exactly as the workspace sends them; {R}, {L}, {T} stand for region, letter type and day.
constexpr std::string_view kTemplateOfToday =
    "SELECT a.DCMT_NM  FROM FLS_Ltr_template AS a  WHERE a.REGION='{R}'  and ((a.Tmplt_TS=   (Select "
    "MAX(b.tmplt_TS) From FLS_LTR_Template b where b.REGION='{R}' and ltr_Typ_ID='{L}' and EFCTV_DT <= #{T}# "
    "and "
    "Exprtn_DT is NULL))  Or (a.tmplt_TS =   (Select MAX(b.tmplt_TS) From FLS_ltr_template b  where "
    "b.REGION='{R}' "
    "and ltr_Typ_ID='{L}' and EXPRTN_DT >= #{T}# and EFCTV_DT <= #{T}# )))   and Ltr_Typ_ID='{L}'";
constexpr std::string_view kTemplatesToHave =
    "SELECT a.*  FROM FLS_Ltr_template AS a where  a.REGION='{R}'  and ((a.Tmplt_TS=  (Select "
    "MAX(b.tmplt_TS) From "
    "FLS_LTR_Template b where  b.REGION='{R}'  and b.LTR_TYP_ID = a.LTR_TYP_ID  and b.Exprtn_DT is NULL))  "
    "Or "
    "(a.tmplt_TS =  (Select MAX(b.tmplt_TS) From FLS_ltr_template b where  b.REGION='{R}'  and b.EXPRTN_DT "
    ">= #{T}# "
    "And b.ltr_Typ_ID = a.ltr_Typ_ID)))  ORDER BY a.ltr_Typ_ID, a.tmplt_TS ";
constexpr std::string_view kLetters =
    "select '' as CD_TBL_CD,  '' as CD_TBL_DES,  '' as LTR_IND  from FLS_LETTER Where REGION='{R}' union "
    "select "
    "LTR_TYP_ID as CD_TBL_CD,  LTR_NM as CD_TBL_DES,  LTR_ONLN_IND AS LTR_IND  from FLS_LETTER where "
    "REGION='{R}' "
    "and LTR_ONLN_IND<>'S'  Order By CD_TBL_DES";
constexpr std::string_view kTemplatesList =
    "select '' as CD_TBL_CD,  '' as CD_TBL_DES  from FLS_LETTER Where REGION='{R}' union select LTR_TYP_ID "
    "as "
    "CD_TBL_CD,  LTR_NM as CD_TBL_DES  from FLS_LETTER where REGION='{R}' and LTR_ONLN_IND<>'E'  Order By "
    "CD_TBL_DES";
constexpr std::string_view kCodes =
    "select '' as REGION, '' as CD_TBL_ID, '' as CD_TBL_CD, '' as SYS_TS, '' as CD_TBL_DES, '' as "
    "ADTL_INFO_TXT, '' "
    "as RSN_FOR_CHNG_TXT, '' as EFCTV_DT, '' as END_DT, '' as ENTR_OFCR_ID, '' as LST_UPDT_TS, '' as ACTN, "
    "'' as "
    "UNT_NBR, '' as SFTYNT_VLTN_CD from FLS_code Where REGION='{R}'  Union Select * From FLS_CODE Where "
    "REGION='{R}' and ((EFCTV_DT <= date() And (END_DT)Is Null)  Or (EFCTV_DT <= date() And END_DT >= "
    "date())) And "
    "CD_TBL_ID = '{T}' Order By CD_TBL_DES";

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
    const auto names = Column(ReplaceAll(Filled(kTemplateOfToday, day), "{L}", type), "DCMT_NM");
    return names.empty() ? "" : names.front();
  }
  std::vector<std::string> TemplatesToHave(const std::string& day) {
    return Column(Filled(kTemplatesToHave, day), "DCMT_NM");
  }
  static std::string Filled(std::string_view statement, std::string_view day_or_table = "") {
    return ReplaceAll(ReplaceAll(statement, "{R}", "K1"), "{T}", day_or_table);
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
}

TEST_F(GivenStatements, LettersComeByNameAfterOneBlankRow) {
  GivenLetter("110", "Certificate");
  GivenLetter("104", "zoning notice", "B");
  GivenLetter("118", "Cover Sheet", "S");
  GivenLetter("115", "Bulletin", "E");
  GivenLetter("109", "Warrant");
  GivenRow("letters.tsv", "K2|110|Another Region's|O");
  EXPECT_THAT(Column(Filled(kLetters), "CD_TBL_DES"),
              ElementsAre("", "Bulletin", "Certificate", "Warrant", "zoning notice"));
  EXPECT_THAT(Column(Filled(kLetters), "LTR_IND"), ElementsAre("", "E", "O", "O", "B"));
  EXPECT_THAT(Column(Filled(kTemplatesList), "CD_TBL_CD"), ElementsAre("", "110", "118", "109", "104"));
}

TEST_F(GivenStatements, OnlyTheCodesOfTodayAreOffered) {
  GivenCode("REFDOCTYP", "C", "Assessment", "", "2026-11-22");
  GivenCode("REFDOCTYP", "M", "Return", "", "2020-01-01", "2026-11-22");
  GivenCode("REFDOCTYP", "P", "Permit", "", "2020-01-01", "2026-11-21");
  GivenCode("REFDOCTYP", "Z", "Zone Pass", "", "2026-11-23");
  GivenCode("LTRBATCH", "BNK", "None");
  EXPECT_THAT(Column(Filled(kCodes, "refdoctyp"), "CD_TBL_CD"), ElementsAre("", "C", "M"));
  const auto rows = Database().Select(Filled(kCodes, "REFDOCTYP"));
  EXPECT_EQ(rows->columns().size(), 14U);
  clock.SetToday(platform::Date{std::chrono::year(2026) / 11 / 23});
  EXPECT_THAT(Column(Filled(kCodes, "REFDOCTYP"), "CD_TBL_CD"), ElementsAre("", "C", "Z"));
}

TEST_F(GivenStatements, ARefusedStatementSaysWhatTheDatabaseSays) {
  try {
    Database().Select("select NOTHING from FLS_LETTER");
    ADD_FAILURE();
  } catch (const platform::Failure& failure) {
    EXPECT_EQ(failure.kind(), platform::Failure::Kind::kRefused);
    EXPECT_THAT(failure.description(), testing::HasSubstr("NOTHING"));
  }
  EXPECT_THROW(Database().Select("select 1; delete from FLS_LETTER"), platform::Failure);
  EXPECT_EQ(Database().Select("select count(*) as N from FLS_LETTER")->Get("n").AsInteger(), 0);
}

}  // namespace
}  // namespace reference_tests
