#include "workspace/fields/field_check.h"

#include <map>

#include "tests/workspace/workspace_room_test.h"

namespace workspace {
namespace {

using std::chrono::year;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class FieldCheckTest : public WorkspaceRoomTest {
 protected:
  std::vector<std::string> Check(PageIndex page) {
    field_check_.CheckEdit(page);
    return field_check_.messages(page);
  }
  bool CanCreate() { return pages_.correspondence.OptOnline[CorrespondencePage::kCreateLetter].enabled(); }
  void GivenEveryFormNumberInvalid() {
    fakes_.utilities.form_number_rule = [](const std::string&, const std::string&) {
      return platform::Utilities::FormNumberVerdict{false, "no"};
    };
  }
};

TEST_F(FieldCheckTest, AsksForALetterTypeFirst) {
  EXPECT_THAT(Check(kPage), ElementsAre("Please select a correspondence type"));
  EXPECT_FALSE(CanCreate());
  EXPECT_TRUE(pages_.correspondence.OptOnline[CorrespondencePage::kClear].enabled());
  EXPECT_TRUE(pages_.correspondence.ZEMLO_LetterType.marked_invalid());

  pages_.correspondence.txtFormNum.SetText("1");
  EXPECT_THAT(Check(kPage),
              ElementsAre("Please select a correspondence type", "Letter template is required"));
}

TEST_F(FieldCheckTest, SaysWhyACommandIsDisabledAtAnyMoment) {
  EXPECT_EQ(field_check_.WhyDisabled(kPage), "Please select a correspondence type") << "before any check";
  EXPECT_FALSE(pages_.correspondence.ZEMLO_LetterType.marked_invalid());
  fakes_.utilities.form_number_rule = [](const auto&, const auto& number) {
    return platform::Utilities::FormNumberVerdict{number != "31000184", "It needs a dash"};
  };
  UserPicksLetterType("120");
  pages_.correspondence.txtFormNum.SetText("31000184");
  EXPECT_EQ(field_check_.WhyDisabled(kPage),
            "Form number is invalid: It needs a dash\nForm type is required");
  UserPicksFormType("C");
  pages_.correspondence.txtFormNum.SetText("3100018-4");
  EXPECT_EQ(field_check_.WhyDisabled(kPage), "");
  EXPECT_EQ(field_check_.WhyDisabled(kTracking), "Please select criteria\nLetter option is required");
}

TEST_F(FieldCheckTest, AsksForTheCustomerOfACustomerLetter) {
  UserPicksLetterType("110");
  EXPECT_THAT(Check(kPage), ElementsAre("Customer ID is required"));
  PanelShowsCustomer("4711");
  EXPECT_THAT(Check(kPage), IsEmpty());
  EXPECT_TRUE(CanCreate());
  EXPECT_FALSE(pages_.correspondence.ZEMLO_LetterType.marked_invalid());
}

TEST_F(FieldCheckTest, AsksForTheDocumentOfADocumentLetter) {
  UserPicksLetterType("120");
  EXPECT_THAT(Check(kPage), ElementsAre("Form number is required", "Form type is required"));
  GivenEveryFormNumberInvalid();
  UserPicksFormType("C");
  pages_.correspondence.txtFormNum.SetText("12");
  EXPECT_THAT(Check(kPage), ElementsAre("Form number is invalid"));
  EXPECT_TRUE(pages_.correspondence.txtFormNum.marked_invalid());
  EXPECT_EQ(fakes_.utilities.validated_form_numbers.back(), std::pair(std::string("C"), std::string("12")));
  fakes_.utilities.form_number_rule = {};
  EXPECT_THAT(Check(kPage), IsEmpty());
}

TEST_F(FieldCheckTest, KeepsLettersOfTheNightlyBatchFromBeingCreated) {
  UserPicksLetterType("130");
  PanelShowsCustomer("4711");
  EXPECT_THAT(Check(kPage), ElementsAre("Batch letter is not available to view"));
  EXPECT_FALSE(CanCreate());
  field_check_.TakeEveryLetter();
  EXPECT_THAT(Check(kPage), IsEmpty());
}

TEST_F(FieldCheckTest, LetsASearchGoWithOneCriterionAndAnOption) {
  EXPECT_THAT(Check(kTracking), ElementsAre("Please select criteria", "Letter option is required"));
  auto& page = pages_.tracking;
  page.OptLetterStatus[TrackingPage::kAll].SetSelected(true);
  const std::vector<std::pair<std::function<void()>, std::function<void()>>> criteria = {
      {[&] { page.txtBatch.SetText("7"); }, [&] { page.txtBatch.SetText(""); }},
      {[&] { page.txtFormNum.SetText("7"); }, [&] { page.txtFormNum.SetText(""); }},
      {[&] { page.from_date.SetValue(year(2004) / 1 / 1); }, [&] { page.from_date.SetValue({}); }},
      {[&] { page.to_date.SetValue(year(2004) / 1 / 1); }, [&] { page.to_date.SetValue({}); }},
      {[&] { page.ZEMLO_LetterType.Code("110"); }, [&] { page.ZEMLO_LetterType.Clear(); }},
      {[&] { PanelShowsCustomer("4711", kTracking); }, [&] { PanelShowsCustomer("", kTracking); }},
  };
  for (const auto& [give, take] : criteria) {
    give();
    EXPECT_THAT(Check(kTracking), IsEmpty());
    EXPECT_TRUE(page.search.enabled());
    take();
    EXPECT_THAT(Check(kTracking), ElementsAre("Please select criteria"));
    EXPECT_FALSE(page.search.enabled());
  }
}

TEST_F(FieldCheckTest, RefusesTextsThatNoListHas) {
  GivenEveryFormNumberInvalid();
  auto& page = pages_.tracking;
  page.txtFormNum.SetText("12");
  page.ZEMLO_FormTypeCodes.SetText("Nothing");
  page.ZEMLO_LetterType.SetText("Nothing");
  EXPECT_THAT(Check(kTracking), ElementsAre("Form number is invalid", "Form type is invalid",
                                            "Letter type is invalid", "Letter option is required"));
}

TEST_F(FieldCheckTest, ChecksDatesAndStatusOfABatchSearch) {
  auto& page = pages_.batch;
  EXPECT_THAT(Check(PageIndex::kBatch), ElementsAre("Date/Date range is required", "Status is required"));
  page.OptBatchStatus[3].SetSelected(true);
  page.OptBatchDate[BatchPage::kDateRange].SetSelected(true);
  page.end_date.SetValue(year(2004) / 3 / 1);
  EXPECT_THAT(Check(PageIndex::kBatch), ElementsAre("Date is required if date range is selected"));
  page.start_date.SetValue(year(2004) / 3 / 2);
  EXPECT_THAT(Check(PageIndex::kBatch), ElementsAre("End date could not be earlier than start date"));
  EXPECT_FALSE(page.cmdBatch[BatchPage::kSearch].enabled());
  page.end_date.SetValue(year(2004) / 3 / 2);
  EXPECT_THAT(Check(PageIndex::kBatch), IsEmpty());
  EXPECT_TRUE(page.cmdBatch[BatchPage::kSearch].enabled());
}

// A key pressed on one page used to take the marks off the others.
TEST_F(FieldCheckTest, LeavesTheMarksOfOtherPagesAlone) {
  const std::map<PageIndex, std::vector<platform::Control*>> fields = {
      {kPage, {&pages_.correspondence.txtFormNum, &pages_.correspondence.ZEMLO_FormTypeCodes}},
      {kTracking, {&pages_.tracking.from_date, &pages_.tracking.OptLetterStatus[TrackingPage::kAll]}},
      {PageIndex::kBatch, {&pages_.batch.end_date, &pages_.batch.OptBatchDate[BatchPage::kLastNight]}},
  };
  for (const auto& [checked, unused] : fields) {
    for (const auto& [page, controls] : fields) {
      for (auto* control : controls) control->SetMarkedInvalid(true);
    }
    field_check_.DefaultFieldColor(checked);
    for (const auto& [page, controls] : fields) {
      for (auto* control : controls) EXPECT_EQ(control->marked_invalid(), page != checked);
    }
  }
}

TEST_F(FieldCheckTest, GivesTheSearchDatesTheirNormalLook) {
  pages_.tracking.from_date.SetMarkedInvalid(true);
  pages_.tracking.to_date.SetMarkedInvalid(true);
  pages_.batch.start_date.SetMarkedInvalid(true);
  field_check_.ClearEdit();
  EXPECT_FALSE(pages_.tracking.from_date.marked_invalid());
  EXPECT_FALSE(pages_.tracking.to_date.marked_invalid());
  EXPECT_TRUE(pages_.batch.start_date.marked_invalid());
}

}  // namespace
}  // namespace workspace
