#include "composition/letter_combo.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "composition/pick_list_source.h"
#include "tests/fakes/fake_services.h"

namespace composition {
namespace {

using fakes::RowsOf;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto kNotInList = "Application error 2147746793.";  // 0x800403E9

class LetterComboTest : public testing::Test {
 protected:
  LetterComboTest() {
    outside.reference.AnswersWhatContains(
        "FLS_LETTER",
        RowsOf("", {{{"CD_TBL_CD", ""}, {"CD_TBL_DES", ""}, {"LTR_IND", ""}},
                    {{"CD_TBL_CD", "110 "}, {"CD_TBL_DES", "Certificate of tax"}, {"LTR_IND", "O"}},
                    {{"CD_TBL_CD", "205"}, {"CD_TBL_DES", "Notice of audit"}, {"LTR_IND", "B"}},
                    {{"CD_TBL_CD", "x9"}, {"CD_TBL_DES", "Notice of change"}, {"LTR_IND", "O"}}}));
    changes_ = list.Change.Connect([this] { ++changes; });
  }

  std::vector<std::string> Reports() const { return outside.errors.Procedures(); }
  std::optional<std::size_t> CurrentRow() const { return list.rows()->CurrentRow(); }
  void UserTypesText(const std::string& text) {
    for (const char key : text) {
      if (list.UserTypes(static_cast<char32_t>(key))) list.UserEditsText(list.shown_text() + key);
    }
  }

  fakes::FakeServices outside;
  ZEMLO_LetterCombo list{outside.services(), "LETTERS"};
  int changes = 0;
  platform::Connection changes_;
};

TEST_F(LetterComboTest, ReadsItsRowsOnFirstUseAndNeverAgain) {
  EXPECT_THAT(outside.reference.statements, IsEmpty());
  EXPECT_EQ(list.Code(), "");
  list.CodeType("BATCH");
  list.Code("205");
  list.Description("Certificate of tax");
  list.UserOpens();
  list.UserTypes(U'a');
  list.UserPicks(1);
  EXPECT_EQ(list.OnlineInd(), "O");
  EXPECT_THAT(outside.reference.statements, ElementsAre(PickListStatement("LETTERS", "OK")));
}

TEST_F(LetterComboTest, EveryWayToUseItFillsIt) {
  using List = ZEMLO_LetterCombo;
  for (const auto& use : std::initializer_list<std::function<void(List&)>>{
           [](List& used) { used.Code(); }, [](List& used) { used.Code(""); },
           [](List& used) { used.Description(" "); }, [](List& used) { used.LookupFormType(""); },
           [](List& used) { used.OnlineInd(); }, [](List& used) { used.UserTypes(U'a'); }}) {
    List used(outside.services(), "LETTERS");
    use(used);
    EXPECT_NE(used.rows(), nullptr);
  }
}

TEST_F(LetterComboTest, WhatOnlyWritesTheTextDoesNotFillIt) {
  list.Description("");
  list.SetText("as it is");
  list.UserLeaves();
  list.Clear();
  EXPECT_EQ(list.Length(), 0);
  EXPECT_EQ(list.AdditionalInfo(), "");
  EXPECT_THAT(outside.reference.statements, IsEmpty());
}

TEST_F(LetterComboTest, RowsThatCouldNotBeReadAreReportedAndAskedForAgain) {
  fakes::FakeServices empty;
  ZEMLO_LetterCombo early(empty.services(), "LETTERS");
  for (int asked = 0; asked < 3; ++asked) EXPECT_EQ(early.Code(), "");
  early.Code("110");
  EXPECT_THAT(empty.errors.Procedures(),
              ElementsAre("ZEMLO_CodesCombo.CheckRecordSource", "ZEMLO_CodesCombo.CheckRecordSource"));
  empty.reference.AnswersWhatContains("FLS_LETTER",
                                      RowsOf("", {{{"CD_TBL_CD", "7"}, {"CD_TBL_DES", "Seven"}}}));
  early.Code("7");
  EXPECT_EQ(early.Description(), "Seven");
}

TEST_F(LetterComboTest, ACodeShowsItsDescriptionAndIsReadBackTrimmed) {
  list.Code("X9");
  EXPECT_EQ(list.Description(), "Notice of change");
  EXPECT_EQ(list.Code(), "x9");
  EXPECT_EQ(list.OnlineInd(), "O");
  list.SetText("  CERTIFICATE of Tax ");
  EXPECT_EQ(list.Code(), "110");
  EXPECT_EQ(CurrentRow(), 1u);
  EXPECT_EQ(changes, 0);
}

TEST_F(LetterComboTest, NoCodeAndATextThatIsNoDescriptionAreNoError) {
  for (const auto* code : {"", "   "}) {
    list.Code("205");
    list.Code(code);
    EXPECT_EQ(list.Description() + list.Code(), "") << "\"" << code << "\"";
  }
  list.Code("205");
  list.SetText("Notice");
  EXPECT_EQ(list.Code(), "");
  EXPECT_EQ(CurrentRow(), 0u);
  list.Code("205");
  list.LookupFormType("");
  EXPECT_EQ(list.Code(), "205");
  EXPECT_THAT(Reports(), IsEmpty());
}

TEST_F(LetterComboTest, ACodeThatIsNotInTheListIsReportedAndLeavesTheText) {
  list.Code("205");
  list.Code("zz");
  EXPECT_EQ(list.Description(), "Notice of audit");
  EXPECT_EQ(CurrentRow(), 0u);
  EXPECT_THAT(Reports(), ElementsAre("ZEMLO_CodesCombo.Property Let Code = ZZ"));
  EXPECT_EQ(outside.errors.reports[0].description, kNotInList);
  EXPECT_EQ(outside.errors.reports[0].component_title, platform::kComponentTitle);
}

TEST_F(LetterComboTest, ADescriptionIsShownAsTheListHasIt) {
  list.Description("NOTICE OF AUDIT");
  EXPECT_EQ(list.Description(), "Notice of audit");
  list.Description("Notice");
  EXPECT_EQ(list.Description(), "Notice of audit");
  EXPECT_THAT(Reports(), ElementsAre("ZEMLO_CodesCombo.Description = Notice"));
  EXPECT_EQ(outside.errors.reports[0].description, "Invalid CD_TBL_DES for CodeType: LETTERS");
  list.Description("");
  EXPECT_EQ(list.Length(), 0);
}

TEST_F(LetterComboTest, HoldsThirtyCharactersAndBeepsAtOneMore) {
  UserTypesText(std::string(31, 'n'));
  EXPECT_EQ(list.Length(), 30);
  EXPECT_EQ(outside.host.beeps, 1);
  EXPECT_TRUE(list.UserTypes(8));
  // Thirty characters that were selected could not be typed over.
  EXPECT_TRUE(list.UserTypes(U'x', 1));
  EXPECT_EQ(outside.host.beeps, 1);
  int told = 0;
  const auto view = list.ContentChanged.Connect([&] { ++told; });
  list.UserEditsText(std::string(40, 'n'));
  EXPECT_EQ(list.Length(), 30);
  EXPECT_EQ(outside.host.beeps, 2);
  EXPECT_EQ(told, 1);

  list.SetText(std::string(40, 'n'));
  list.UserEditsText(std::string(39, 'n'));  // a long description may be shortened
  EXPECT_EQ(list.Length(), 39);
  list.SetText("ÄÖÜäöüÄÖÜäöüÄÖÜäöüÄÖÜäöüÄÖÜäö");
  EXPECT_EQ(list.Length(), 29);
  EXPECT_TRUE(list.UserTypes(U'x'));
  EXPECT_EQ(outside.host.beeps, 2);
}

TEST_F(LetterComboTest, LeavingCompletesToTheFirstDescriptionThatStartsSo) {
  struct Case {
    const char* typed;
    const char* shown;
    const char* code;
    int changes;
  };
  for (const auto& [typed, shown, code, told] :
       {Case{"NOT", "Notice of audit", "205", 1}, Case{"Notice of change", "Notice of change", "x9", 1},
        Case{"otice", "otice", "", 0}, Case{"  ", "  ", "", 0}}) {
    list.Clear();
    changes = 0;
    UserTypesText(typed);
    EXPECT_EQ(list.GetText(), typed);
    list.UserLeaves();
    list.UserLeaves();
    EXPECT_EQ(list.GetText(), shown);
    EXPECT_EQ(list.Code(), code) << typed;
    EXPECT_EQ(changes, told) << typed;
  }
  EXPECT_THAT(Reports(), IsEmpty());
}

TEST_F(LetterComboTest, OffersTheDescriptionsThatHoldEveryTypedWord) {
  outside.reference.AnswersWhatContains(
      "FLS_CODE", RowsOf("", {{{"CD_TBL_CD", ""}, {"CD_TBL_DES", ""}},
                              {{"CD_TBL_CD", "1"}, {"CD_TBL_DES", "Bond Release"}},
                              {{"CD_TBL_CD", "2"}, {"CD_TBL_DES", "Notice to Élan"}},
                              {{"CD_TBL_CD", "3"}, {"CD_TBL_DES", "Surety Bond Demand"}}}));
  ZEMLO_LetterCombo letters(outside.services(), "KINDS");
  EXPECT_THAT(letters.RowsWith("bond"), IsEmpty()) << "not read yet";
  letters.UserOpens();
  using Rows = std::vector<std::size_t>;
  const std::pair<const char*, Rows> cases[] = {
      {"bond", {1, 3}},   {"BOND  dem", {3}},    {"demand, bond", {3}}, {"elan", {2}},
      {"", {0, 1, 2, 3}}, {" - ", {0, 1, 2, 3}}, {"bonded", {}},
  };
  for (const auto& [typed, rows] : cases) EXPECT_EQ(letters.RowsWith(typed), rows) << typed;
}

TEST_F(LetterComboTest, LeavingTakesTheErrorColoursAway) {
  int looks = 0;
  const auto view = list.LookChanged.Connect([&] { ++looks; });
  list.BackColor(0x0000FF);
  list.BackColor(0x0000FF);
  list.ForeColor(0xFFFFFF);
  list.ShowError();
  EXPECT_EQ(looks, 3);
  UserTypesText("zzz");
  list.UserLeaves();
  EXPECT_EQ(list.BackColor(), 0x80000005u);
  EXPECT_EQ(list.ForeColor(), 0u);
  EXPECT_FALSE(list.marked_invalid());
}

TEST_F(LetterComboTest, PickingARowShowsItAndTells) {
  list.UserPicks(3);
  EXPECT_EQ(list.Code(), "x9");
  EXPECT_EQ(changes, 1);
  list.UserPicks(0);
  EXPECT_EQ(list.Code(), "");
  EXPECT_EQ(changes, 2);
  list.UserPicks(99);
  EXPECT_EQ(changes, 2);
}

TEST_F(LetterComboTest, AnObserverMayDestroyTheListThatChanged) {
  auto doomed = std::make_unique<ZEMLO_LetterCombo>(outside.services(), "LETTERS");
  const auto holder = doomed->Change.Connect([&] { doomed.reset(); });
  doomed->UserPicks(1);
  EXPECT_EQ(doomed, nullptr);
}

TEST_F(LetterComboTest, FormTypesStandInTheOrderOfTheirCodes) {
  outside.utilities.descriptions = {{{"REFDOCTYP", "R"}, "Receipt"},
                                    {{"REFDOCTYP", "C"}, "Carrier account, as long as they come"}};
  list.LookupFormType("RCX");
  std::vector<std::string> rows;
  for (std::size_t row = 0; row < list.rows()->RecordCount(); ++row) {
    rows.push_back(list.rows()->Text(row, "CD_TBL_CD") + "|" + list.rows()->Text(row, "CD_TBL_DES"));
  }
  EXPECT_THAT(rows, ElementsAre("|", "R|Receipt", "C|Carrier account, as long as th", "X|"));
  list.Code("R");
  EXPECT_EQ(list.Code(), "R");
  EXPECT_EQ(outside.reference.statements.size(), 1u);
}

TEST_F(LetterComboTest, AdditionalInfoIsThatOfTheChosenCode) {
  outside.reference.AnswersWhatContains(
      "FLS_CODE", RowsOf("", {{{"CD_TBL_CD", ""}, {"CD_TBL_DES", ""}, {"ADTL_INFO_TXT", ""}},
                              {{"CD_TBL_CD", "N"}, {"CD_TBL_DES", "North"}, {"ADTL_INFO_TXT", "40"}}}));
  ZEMLO_LetterCombo states(outside.services(), "STATE");
  states.Code("n");
  EXPECT_EQ(states.AdditionalInfo(), "40");
  states.Clear();
  EXPECT_EQ(states.AdditionalInfo(), "");
}

}  // namespace
}  // namespace composition
