#include "tracking/row_format.h"

#include <gmock/gmock.h>

#include "tests/fakes/fake_services.h"
#include "workspace/requests/letter_list.h"

namespace tracking {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using workspace::PageIndex;

class RowFormatTest : public testing::Test {
 protected:
  RowFormatTest() {
    fakes_.utilities.descriptions = {{{"REFDOCTYP", "C"}, " Tax Liability "},
                                     {{"LTRPRNTCD", "P"}, "Printed "},
                                     {{"LTRBATCH", "BNK"}, "None"},
                                     {{"LTRBATCH", "REP"}, " Reprint"}};
    fakes_.utilities.officers = {{"DEMO01", " Ann Lee "}};
  }

  /// Lists one letter and shows its row.
  platform::RecordSet& Shown(PageIndex page, const fakes::Row& letter) {
    const auto rows = fakes::RowsOf("CORRHIST", {letter});
    workspace::ShowLetters(pages_.sdgGrid(page), rows);
    format_.sdgGrid_RowLoaded(page, 0);
    return *rows;
  }
  /// The letter's row in the tracking grid.
  platform::RecordSet& Tracked(const fakes::Row& letter) { return Shown(PageIndex::kTracking, letter); }

  fakes::FakeServices fakes_;
  workspace::Pages pages_{fakes_.services()};
  workspace::LetterNames names_{fakes_.services()};
  RowFormat format_{fakes_.services(), /*with_diagnostics=*/false, names_, pages_};
};

const fakes::Row kLetter = {
    {"SEQ_NBR", 42},         {"DCMT_FILE_TXT", "ctl110é.docx"},
    {"FORM_NBR", " 12345 "}, {"FORM_CK_DGT_NBR", "7"},
    {"FORM_TYP_CD", "C"},    {"LST_UPDT_INSP_ID", "DEMO01"},
    {"PRNT_STTS_CD", "P"},   {"SYS_RFRNC_CD", "B"},
    {"FLS_BTCH_NBR", 70},    {"BTCH_ACTN_CD", "REP"},
    {"TRP_ID", "B"},         {"TRP_DIST_ID", "12"},
};

TEST_F(RowFormatTest, DressesALetterOfTheTrackingPage) {
  auto& row = Tracked(kLetter);
  const std::pair<const char*, const char*> expected[] = {
      {"BTCH_ACTN_DESC", "Reprint"},     {"OFFICER_NAME", "Ann Lee"}, {"Form_Type", "Tax Liability"},
      {"PRNT_STTS_DESC", "Printed"},     {"Job_Type", "Batch"},       {"FORM_NBR_WITH_DGT", "12345-7"},
      {"DCMT_FILE_TXT", "CTL110É.DOCX"}, {"TroopDistrict", "B12"},    {"FLS_BTCH_NBR", "70"},
  };
  for (const auto& [column, text] : expected) EXPECT_EQ(row.Text(0, column), text) << column;
}

TEST_F(RowFormatTest, DressesALetterOfTheCorrespondencePage) {
  auto& row = Shown(PageIndex::kCorrespondence, kLetter);
  EXPECT_EQ(row.Text("OFFICER_NAME") + row.Text("Form_Type") + row.Text("PRNT_STTS_DESC"),
            "Ann LeeTax LiabilityPrinted");
  EXPECT_EQ(row.Text("FORM_NBR_WITH_DGT") + row.Text("DCMT_FILE_TXT"), "12345-7CTL110É.DOCX");
  EXPECT_FALSE(row.HasColumn("BTCH_ACTN_DESC")) << "of the other grid";
  EXPECT_THAT(fakes_.errors.reports, IsEmpty());
}

TEST_F(RowFormatTest, KnowsWhatToShowForOddCodes) {
  struct Case {
    const char* column;
    platform::Value value;
    const char* shown_in;
    const char* shown;
  };
  const Case cases[] = {
      {"BTCH_ACTN_CD", {}, "BTCH_ACTN_DESC", "None"},
      {"BTCH_ACTN_CD", "ZZZ", "BTCH_ACTN_DESC", ""},
      {"LST_UPDT_INSP_ID", "X9", "OFFICER_NAME", "X9"},
      {"FORM_TYP_CD", {}, "Form_Type", ""},
      {"PRNT_STTS_CD", "", "PRNT_STTS_DESC", ""},
      {"SYS_RFRNC_CD", "O", "Job_Type", "Online"},
      {"SYS_RFRNC_CD", "X", "Job_Type", ""},
      {"SYS_RFRNC_CD", "b", "Job_Type", ""},
      {"TRP_ID", {}, "TroopDistrict", "12"},
  };
  for (const auto& [column, value, shown_in, shown] : cases) {
    auto letter = kLetter;
    for (auto& [name, cell] : letter) {
      if (name == column) cell = value;
    }
    EXPECT_EQ(Tracked(letter).Text(0, shown_in), shown) << column << " " << value.AsText();
  }
  EXPECT_THAT(fakes_.errors.reports, IsEmpty());
}

TEST_F(RowFormatTest, NamesTheLetter) {
  fakes_.reference.AnswersWhatContains(
      "FROM FLS_LETTER WHERE REGION",
      fakes::RowsOf("", {{{"LTR_TYP_ID", "109"}, {"LTR_NM", "Tax Warrant"}}}));
  EXPECT_EQ(Tracked({{"LTR_TYP_ID", "109"}, {"LST_UPDT_INSP_ID", "X"}}).Text("LTR_NM"), "Tax Warrant");
  EXPECT_EQ(Tracked({{"LTR_TYP_ID", "999"}, {"LST_UPDT_INSP_ID", "X"}}).Text("LTR_NM"), "999");
  EXPECT_THAT(fakes_.reference.statements, testing::SizeIs(1)) << "read once";
}

TEST_F(RowFormatTest, AddsTheSequenceNumberForDiagnostics) {
  auto& row = Tracked(kLetter);
  RowFormat(fakes_.services(), /*with_diagnostics=*/true, names_, pages_)
      .sdgGrid_RowLoaded(PageIndex::kTracking, 0);
  EXPECT_EQ(row.Text("FLS_BTCH_NBR"), "70/42");
}

TEST_F(RowFormatTest, GoesOnWithoutAReportAfterALetterWithoutOfficer) {
  auto& row = Tracked({{"FORM_NBR", "1"}, {"DCMT_FILE_TXT", "a.docx"}});
  EXPECT_TRUE(row.Get("OFFICER_NAME").IsNull());
  EXPECT_EQ(row.Text("DCMT_FILE_TXT"), "A.DOCX");
  EXPECT_THAT(fakes_.errors.reports, IsEmpty());
}

TEST_F(RowFormatTest, ReportsAStepThatFailsAndGoesOnWithTheNext) {
  auto rows = fakes::RowsOf("", {{{"DCMT_FILE_TXT", "a.docx"}, {"TRP_ID", "A"}, {"TroopDistrict", ""}}});
  pages_.tracking.sdgGrid.Bind(rows);
  format_.sdgGrid_RowLoaded(PageIndex::kTracking, 0);
  EXPECT_EQ(rows->Text("DCMT_FILE_TXT"), "A.DOCX");
  EXPECT_THAT(fakes_.errors.Procedures(),
              testing::AllOf(testing::SizeIs(8), testing::Each("ZEMLO_Correspondence.sdgGrid_RowLoaded")));
}

TEST_F(RowFormatTest, TellsOneChangeARow) {
  const auto rows = fakes::RowsOf("CORRHIST", {kLetter});
  workspace::ShowLetters(pages_.tracking.sdgGrid, rows);
  int changes = 0;
  const auto connection = rows->Changed.Connect([&] { ++changes; });
  format_.sdgGrid_RowLoaded(PageIndex::kTracking, 0);
  EXPECT_EQ(changes, 1);
}

}  // namespace
}  // namespace tracking
