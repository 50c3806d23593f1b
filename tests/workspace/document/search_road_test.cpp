#include "tests/workspace/document/workspace_test.h"

namespace workspace {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class SearchRoad : public WorkspaceTest {
 protected:
  SearchRoad() {
    GivenWorkspaceIsOpen();
    document_.pages().tabs.Select(PageIndex::kTracking);
    sent_ = fakes_.server.requests.size();
  }
  void GivenCriteria() {
    UserChoosesCustomer("4711", kTracking);
    page_.OptLetterStatus[TrackingPage::kAll].UserClicks();
  }
  void UserSearches() { page_.search.UserClicks(); }
  void ServerFinds(const std::vector<fakes::Row>& letters) {
    fakes_.server.ReplyWith("CORRHIST", letters);
    fakes_.RunEvents();
  }
  std::size_t SentSearches() const { return fakes_.server.requests.size() - sent_; }

  TrackingPage& page_ = document_.pages().tracking;
  std::size_t sent_ = 0;
};

TEST_F(SearchRoad, NeedsACriterionAndALetterStatus) {
  EXPECT_FALSE(page_.search.enabled());
  page_.OptLetterStatus[TrackingPage::kAll].UserClicks();
  EXPECT_FALSE(page_.search.enabled());
  EXPECT_THAT(document_.CheckMessages(kTracking), ElementsAre("Please select criteria"));
  UserSearches();
  EXPECT_EQ(SentSearches(), 0u);
  page_.txtBatch.SetText("7");
  EXPECT_TRUE(page_.search.enabled());
}

TEST_F(SearchRoad, GoesFromTheCriteriaToTheLettersAsTheyAreShown) {
  GivenCriteria();
  UserSearches();
  EXPECT_THAT(LastRequest().Keys(), ElementsAre("KORVADSK|key:CUST_ID|=|4711",
                                                "KORVADSK|key:LETTER_TYPE|=|All", "KORVADSK|key:THIN|=|YES"));
  EXPECT_FALSE(page_.sdgGrid.enabled());

  fakes_.utilities.officers = {{"DEMO01", "Ann Lee"}};
  ServerFinds({{{"SEQ_NBR", 1}, {"LST_UPDT_INSP_ID", "DEMO01"}, {"CUST_ID", "4711"}}});
  EXPECT_TRUE(page_.sdgGrid.enabled());
  EXPECT_EQ(fakes_.status.LastText(), "Displaying letter history");
  EXPECT_EQ(fakes_.host.pointer, platform::MousePointer::kNormal);
  EXPECT_EQ(page_.sdgGrid.rows()->Text("OFFICER_NAME"), "") << "not before the row is shown";

  page_.sdgGrid.EnsureRowLoaded(0);
  EXPECT_EQ(page_.sdgGrid.rows()->Text("OFFICER_NAME"), "Ann Lee");
  fakes_.utilities.officers = {};
  page_.sdgGrid.EnsureRowLoaded(0);
  EXPECT_EQ(page_.sdgGrid.rows()->Text("OFFICER_NAME"), "Ann Lee") << "once";
  EXPECT_THAT(fakes_.errors.reports, IsEmpty());
}

TEST_F(SearchRoad, SendsOneRequestForADoubleClick) {
  GivenCriteria();
  UserSearches();
  UserSearches();
  EXPECT_EQ(SentSearches(), 1u);
  ServerFinds({});
  UserSearches();
  EXPECT_EQ(SentSearches(), 2u);
}

TEST_F(SearchRoad, ThatFailsTellsWhyAndKeepsTheListInUse) {
  GivenCriteria();
  UserSearches();
  ServerFinds({{{"SEQ_NBR", 1}}});
  for (const bool times_out : {false, true}) {
    UserSearches();
    fakes_.host.messages.clear();
    times_out ? fakes_.server.TimesOut("no answer") : fakes_.server.ReplyWithError("no answer");
    fakes_.RunEvents();
    EXPECT_THAT(fakes_.host.MessageTexts(), ElementsAre("no answer"));
    EXPECT_EQ(fakes_.status.LastText(), times_out ? "Search timed out" : "Search was not successful");
    EXPECT_TRUE(page_.sdgGrid.enabled());
    EXPECT_EQ(page_.sdgGrid.rows()->RecordCount(), 1u);
  }
}

// Both pages wrote one request: a receipt was asked for with the check digit of the search before it, and
// nobody was told that a letter lacked its customer after letters of one had been searched.
TEST_F(SearchRoad, LeavesNothingBehindInTheRequestForALetter) {
  GivenCriteria();
  page_.txtFormNum.SetText("1234567-8");
  UserSearches();
  ServerFinds({});

  UserPicksLetterType("110");
  EXPECT_THAT(fakes_.host.MessageTexts(), ElementsAre("Customer Id is needed to create/search payment plan"));

  GivenTemplate("CIT120.docx");
  UserPicksLetterType("120");
  UserPicksFormType("R");
  UserTypesFormNumber("7654321");
  UserClicksCreateLetter();
  EXPECT_THAT(LastRequest().FindRecord("XML_CONTEXT_INPUT").Assigned(),
              ElementsAre("FORM_NBR=7654321", "RCPT_NBR=7654321", "FORM_TYP_CD=R"));
}

TEST_F(SearchRoad, GivesTheCustomerCommandsBackWithAClearedPage) {
  GivenCriteria();
  UserSearches();
  ServerFinds({});
  EXPECT_FALSE(page_.panel.select_customer.enabled());
  page_.clear.UserClicks();
  EXPECT_TRUE(page_.panel.select_customer.enabled());
  EXPECT_TRUE(page_.panel.select_account.enabled());
  EXPECT_FALSE(page_.search.enabled());
}

}  // namespace
}  // namespace workspace
