#include <gmock/gmock.h>

#include "customers/frm_cust_select.h"
#include "customers/select_cust_form_inq.h"
#include "tests/workspace/document/workspace_test.h"

namespace workspace {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A customer on its way to a page: from a listed letter, from the server, from the search.
class CustomerRoad : public WorkspaceTest {
 protected:
  CustomerRoad() {
    GivenWorkspaceIsOpen();
    document_.pages().tabs.Select(kTracking);
    page_.sdgGrid.Bind(fakes::RowsOf(
        "CORRHIST", {{{"SEQ_NBR", 7}, {"CUST_ID", "4711"}, {"PRNT_STTS_CD", "P"}}, {{"SEQ_NBR", 8}}}));
  }
  void ServerReplies(fakes::ScriptedReply reply) {
    fakes_.server.Reply(std::move(reply));
    fakes_.RunEvents();
  }
  void UserFinds(customers::ZEMLO_CustSelect& select, const fakes::Row& customer) {
    select.txtFind.SetText("acme");
    select.UserPressesEnter();
    ServerReplies(fakes::ScriptedReply::With("CUSTOMER", {customer}));
  }
  void UserChooses(platform::Command& command, const fakes::Row& customer) {
    fakes_.host.user_in_form = [this, customer](platform::Form& form) {
      auto& dialog = static_cast<customers::frmCustSelect&>(form);
      UserFinds(dialog.ZEMLO_CustSelect1, customer);
      dialog.cmdOk.UserClicks();
    };
    command.UserClicks();
  }
  void UserPicksAccount(platform::Command& command, const fakes::Row& customer) {
    fakes_.host.user_in_form = [this, customer](platform::Form& form) {
      auto& dialog = static_cast<customers::ZEMLO_SelectCustFormInq&>(form);
      UserFinds(dialog.ZEMLO_CustSelect1, customer);
      ServerReplies(
          fakes::ScriptedReply::With("CUSTOMERFORM", {{{"FORM_NBR", "3100004"}, {"FORM_CK_DGT_NBR", "9"}}}));
      dialog.mSdgGrid.UserSelects({0});
      dialog.mCmdButton[customers::ZEMLO_SelectCustFormInq::kOk].UserClicks();
    };
    command.UserClicks();
  }
  void GivenAccountTypes() {
    fakes_.reference.AnswersWhatContains(
        "from FLS_code", fakes::RowsOf("", {{{"CD_TBL_CD", ""}, {"CD_TBL_DES", ""}},
                                            {{"CD_TBL_CD", "C"}, {"CD_TBL_DES", "Citation"}}}));
  }
  static fakes::Row Acme() {
    return {{"Cust_Id", "9000"},          {"CUST_BSNS_NM", "ACME"}, {"FIRST_NM", {}},       {"LAST_NM", {}},
            {"mail_addr_1", "1 MAIN ST"}, {"mail_addr_2", {}},      {"mail_city", "TULSA"}, {"mail_st", "OK"},
            {"mail_zip_cd", "74103"}};
  }

  TrackingPage& page_ = document_.pages().tracking;
};

TEST_F(CustomerRoad, ShowsTheCustomerOfAListedLetter) {
  page_.sdgGrid.UserSelects({0});
  EXPECT_FALSE(page_.letter_action.enabled());
  ServerReplies(fakes::ScriptedReply::With(
      "XML_CONTEXT", {{{"XML_CONTEXT",
                        "<XML_CONTEXT><CUST_ID>4711</CUST_ID><CUSTOMER_NAME>ACME</CUSTOMER_NAME>"
                        "<CUSTOMER_ADDR>1 MAIN ST\nTULSA, OK 74103</CUSTOMER_ADDR></XML_CONTEXT>"}}}));
  EXPECT_EQ(page_.panel.name.caption(), "ACME");
  EXPECT_EQ(page_.panel.city_line.caption(), "TULSA, OK 74103");
  EXPECT_TRUE(page_.letter_action.enabled());
  EXPECT_EQ(fakes_.status.LastText(), "Ready");
  EXPECT_EQ(fakes_.host.pointer, platform::MousePointer::kNormal);
}

TEST_F(CustomerRoad, AsksTheServerWhereTheLetterHasNoAddress) {
  page_.sdgGrid.UserSelects({0});
  ServerReplies(fakes::ScriptedReply::With("XML_CONTEXT", {{{"XML_CONTEXT", "<XML_CONTEXT/>"}}}));
  EXPECT_THAT(LastRequest().Keys(),
              ElementsAre("KORVADSK|key:CUST_ID|=|4711", "CUSTOMER|key:ExclCols|=|OT_BAL"));
  EXPECT_EQ(fakes_.host.pointer, platform::MousePointer::kHourglass);

  ServerReplies(fakes::ScriptedReply::With("CUSTOMER", {Acme()}));
  EXPECT_EQ(page_.panel.name.caption(), "ACME");
  EXPECT_EQ(page_.panel.customer_id.caption(), "9000");
  EXPECT_EQ(fakes_.host.pointer, platform::MousePointer::kNormal);
  EXPECT_THAT(fakes_.errors.reports, IsEmpty());
}

TEST_F(CustomerRoad, GivesTheLetterActionsBackAfterAnError) {
  page_.sdgGrid.UserSelects({0});
  fakes_.server.ReplyWithError("There is no letter \"7\" in the history.");
  fakes_.RunEvents();
  EXPECT_TRUE(page_.letter_action.enabled());
  EXPECT_EQ(fakes_.status.LastText(), "Search was not successful");
}

TEST_F(CustomerRoad, KeepsTheCustomerThatTheUserChoseForAListedLetter) {
  UserChooses(page_.panel.select_customer, Acme());
  EXPECT_TRUE(document_.customer().TrackingCustomerFixed);
  const auto sent = fakes_.server.requests.size();
  page_.sdgGrid.UserSelects({0});
  page_.sdgGrid.UserSelects({1});
  EXPECT_EQ(fakes_.server.requests.size(), sent);
  EXPECT_EQ(page_.panel.customer_id.caption(), "9000");
}

// The list was older than the customer that the page showed: a letter of somebody else was printed for it.
TEST_F(CustomerRoad, AsksBeforeALetterOfAnotherCustomerIsShownSavedOrPrinted) {
  UserChooses(page_.panel.select_customer, Acme());
  page_.sdgGrid.UserSelects({0});
  const auto sent = fakes_.server.requests.size();
  const std::size_t actions[] = {TrackingPage::kViewLetter, TrackingPage::kSave, TrackingPage::kReprintLocal};
  for (const auto action : actions) {
    fakes_.host.messages.clear();
    page_.OptLetter[action].UserClicks();
    EXPECT_THAT(fakes_.host.MessageTexts(),
                ElementsAre("This letter is for customer 4711.\r\nThe page shows 9000 ACME.\r\n\r\n"
                            "Do you want to go on?"));
    EXPECT_EQ(fakes_.host.messages.front().default_answer, platform::MessageAnswer::kNo);
    EXPECT_EQ(fakes_.server.requests.size(), sent);
    EXPECT_TRUE(page_.letter_action.enabled());
    EXPECT_TRUE(page_.sdgGrid.enabled());
  }
  fakes_.host.answers = {platform::MessageAnswer::kYes};
  page_.OptLetter[TrackingPage::kViewLetter].UserClicks();
  EXPECT_EQ(fakes_.server.requests.size(), sent + 1);
}

TEST_F(CustomerRoad, LetsTheUserChooseAnotherCustomerOnceThePageIsCleared) {
  auto& page = document_.pages().correspondence;
  UserChooses(page.panel.select_customer, Acme());
  EXPECT_EQ(page.panel.customer_id.caption(), "9000");
  EXPECT_FALSE(page.panel.select_customer.enabled());
  EXPECT_FALSE(page.panel.select_account.enabled());
  page.OptOnline[CorrespondencePage::kClear].UserClicks();
  EXPECT_TRUE(page.panel.select_customer.enabled());
  EXPECT_TRUE(page.panel.select_account.enabled());
}

TEST_F(CustomerRoad, TakesAnAccountOfTheCustomerOntoEitherPage) {
  for (const auto index : {PageIndex::kCorrespondence, kTracking}) {
    auto& page = document_.pages().Letter(index);
    page.ZEMLO_FormTypeCodes.LookupFormType("CR");
    GivenAccountTypes();
    UserPicksAccount(page.panel.select_account, Acme());
    EXPECT_EQ(page.panel.customer_id.caption(), "9000");
    EXPECT_EQ(page.ZEMLO_FormTypeCodes.Code(), "C");
    EXPECT_EQ(page.ZEMLO_FormTypeCodes.Tag, "C");
    EXPECT_EQ(page.txtFormNum.text(), "3100004-9");
    EXPECT_EQ(fakes_.status.LastText(), "Ready");
  }
  EXPECT_THAT(fakes_.host.MessageTexts(), IsEmpty());
  EXPECT_THAT(fakes_.errors.reports, IsEmpty());
}

TEST_F(CustomerRoad, KeepsTheTypeOfAPickedAccountForTheLetterThatIsChosenThen) {
  auto& page = document_.pages().correspondence;
  page.ZEMLO_FormTypeCodes.LookupFormType("R");  // of a letter before
  GivenAccountTypes();
  UserPicksAccount(page.panel.select_account, Acme());
  EXPECT_THAT(fakes_.host.MessageTexts(),
              ElementsAre("Please select a correspondence type from the Correspondence Names list."));
  EXPECT_EQ(page.ZEMLO_FormTypeCodes.rows()->RecordCount(), 2u) << "the type is offered";
  UserPicksLetterType("120");
  EXPECT_EQ(page.ZEMLO_FormTypeCodes.Code(), "C");
  EXPECT_EQ(page.txtFormNum.text(), "3100004-9");

  page.ZEMLO_FormTypeCodes.Tag = "W";  // a type that the next letter does not go with
  UserPicksLetterType("120");
  EXPECT_EQ(page.ZEMLO_FormTypeCodes.Code(), "");
  EXPECT_THAT(fakes_.errors.reports, IsEmpty());
}

TEST_F(CustomerRoad, ClearsThePageWhenTheAccountDialogIsCancelled) {
  auto& page = document_.pages().correspondence;
  GivenAccountTypes();
  UserPicksAccount(page.panel.select_account, Acme());
  page.panel.EnableSelection(true);
  fakes_.host.user_in_form = [](platform::Form& form) { form.Close(); };
  page.panel.select_account.UserClicks();
  EXPECT_EQ(page.panel.name.caption() + page.txtFormNum.text() + page.ZEMLO_FormTypeCodes.GetText(), "");
  EXPECT_EQ(document_.customer().CustomerId, "");
  EXPECT_TRUE(page.panel.select_account.enabled());
}

}  // namespace
}  // namespace workspace
