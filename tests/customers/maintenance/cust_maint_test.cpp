#include "customers/maintenance/cust_maint.h"

#include "tests/customers/maintenance/maintained_customer.h"

namespace customers {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr auto kQuestion = "Would you like to save changes to your data ?";

class CustMaintTest : public MaintainedCustomer {
 protected:
  void UserChangesAName() { Text(2).SetText("SMYTHE"); }
  std::size_t Requests() const { return outside.server.requests.size(); }
};

TEST_F(CustMaintTest, ShowsAnIndividualOrABusiness) {
  OpenIndividual();
  EXPECT_EQ(form.caption(), "Updating Selected Customer HATTIE SMITH");
  EXPECT_EQ(form.mLblFirst.caption(), "First Name:");
  EXPECT_TRUE(Text(0).visible());
  EXPECT_FALSE(Text(4).visible());
  EXPECT_TRUE(form.mLblSuffix.visible());
  EXPECT_EQ(form.tab_order().at(0), &Text(0));
  EXPECT_EQ(form.tab_order().at(4), &form.mPhone);
  EXPECT_EQ(form.tab_order().at(9), &form.mCboState[0]);
  EXPECT_FALSE(form.mFraType.enabled());

  ZEMLO_CustMaint business(outside.services(), "Letters");
  business.SetCustomerType(" b");
  EXPECT_EQ(business.SetCustomerType(), "B");
  EXPECT_EQ(business.mLblFirst.caption(), "Business Name:");
  EXPECT_EQ(business.mLblLast.caption(), "Contact Name:");
  EXPECT_TRUE(business.mTxtCust[5].visible());
  EXPECT_FALSE(business.mLblMiddle.visible());
  EXPECT_EQ(business.tab_order().at(1), &business.mTxtCust[5]);
  business.SetCustomerMode("view");
  EXPECT_EQ(business.caption(), "Maintain Customer");
}

TEST_F(CustMaintTest, ClosesAtOnceWhereNothingWasChanged) {
  OpenIndividual();
  UserCloses();
  EXPECT_FALSE(form.shown());
  EXPECT_TRUE(form.loaded()) << "hidden; the caller unloads it";
  EXPECT_TRUE(form.CustomerMaintExitStateGet());
  EXPECT_THAT(Messages(), IsEmpty());
}

TEST_F(CustMaintTest, AsksBeforeChangesAreLost) {
  OpenIndividual();
  UserChangesAName();
  outside.host.answers = {platform::MessageAnswer::kCancel};
  UserCloses();
  EXPECT_TRUE(form.shown());
  EXPECT_EQ(outside.host.messages[0].buttons, platform::MessageButtons::kYesNoCancel);
  EXPECT_EQ(outside.host.messages[0].icon, platform::MessageIcon::kQuestion);

  outside.host.answers = {platform::MessageAnswer::kYes};
  EXPECT_FALSE(form.Close()) << "the close box is the same";
  EXPECT_EQ(Requests(), 1u);
  EXPECT_TRUE(form.CustomerMaintExitStateGet());
  ServerSaves();
  EXPECT_FALSE(form.shown());
  EXPECT_THAT(Messages(), ElementsAre(kQuestion, kQuestion));
}

TEST_F(CustMaintTest, AsksBeforeAChangedPhoneIsLostThatCannotBeSavedAlone) {
  OpenIndividual();
  form.mPhone.SetText("(405) 521 2486");
  EXPECT_FALSE(Command(0).enabled());
  outside.host.answers = {platform::MessageAnswer::kYes};
  UserCloses();
  EXPECT_THAT(Messages(), ElementsAre(kQuestion));
  EXPECT_THAT(Sent(), Contains("PHN_NBR=4055212486"));
}

TEST_F(CustMaintTest, LosesThemWhereTheUserSaysNo) {
  OpenIndividual();
  UserChangesAName();
  outside.host.answers = {platform::MessageAnswer::kNo};
  UserCloses();
  EXPECT_FALSE(form.shown());
  EXPECT_EQ(Requests(), 0u);
  EXPECT_FALSE(form.saved());
}

TEST_F(CustMaintTest, SendsNothingWhileAFieldIsWrong) {
  OpenIndividual();
  platform::Control* focus = nullptr;
  const auto focus_wanted = form.FocusWanted.Connect([&](platform::Control& control) { focus = &control; });
  Text(2).SetText("");
  EXPECT_FALSE(Command(0).enabled());
  EXPECT_THAT(Command(0).why_disabled(), HasSubstr("Last name"));
  outside.host.answers = {platform::MessageAnswer::kYes};
  UserCloses();
  EXPECT_EQ(Requests(), 0u);
  EXPECT_THAT(Messages(), ElementsAre(kQuestion, "- Last name is a required field.\r\n"));
  EXPECT_EQ(outside.host.messages[1].icon, platform::MessageIcon::kCritical);
  EXPECT_EQ(focus, &Text(2));
}

TEST_F(CustMaintTest, SavesOnceAndClosesWithWhoWasSaved) {
  OpenNew("B");
  Text(4).SetText("ACME");
  EnterMailing();
  UserSaves();
  EXPECT_EQ(outside.status.LastText(), "Saving Customer Information ...");
  for (const std::size_t number : {0, 1, 2, 3}) EXPECT_FALSE(Command(number).enabled());
  EXPECT_FALSE(form.mFraAddress[0].enabled());
  EXPECT_FALSE(form.mChkAccept[0].enabled());
  Text(4).SetText("ACME INC");  // typed on while it is on its way
  UserSaves();
  UserCloses();
  EXPECT_EQ(Requests(), 1u);
  EXPECT_TRUE(form.shown());
  ServerSaves("100777");
  EXPECT_FALSE(form.shown());
  EXPECT_TRUE(form.saved());
  EXPECT_EQ(form.CustID, "100777");
  EXPECT_FALSE(form.CustomerMaintExitStateGet());
  EXPECT_EQ(outside.status.LastText(), "");
  EXPECT_EQ(outside.host.pointer, platform::MousePointer::kNormal);
}

TEST_F(CustMaintTest, KeepsWhatWasTypedWhenTheServerRefuses) {
  OpenIndividual();
  UserChangesAName();
  UserSaves();
  outside.server.ReplyWithError("OFFICER2 changed the phone at 09:12.");
  outside.RunEvents();
  EXPECT_THAT(Messages(), ElementsAre("OFFICER2 changed the phone at 09:12."));
  EXPECT_THAT(outside.status.texts, Contains("Query Not Successful."));
  EXPECT_EQ(outside.status.LastText(), "");
  EXPECT_TRUE(form.shown());
  EXPECT_EQ(Text(2).text(), "SMYTHE");
  EXPECT_TRUE(form.mFraAddress[0].enabled());
  EXPECT_TRUE(form.mChkAccept[0].enabled());
  form.mPhone.UserLeaves();
  EXPECT_TRUE(Command(0).enabled()) << "it can be tried again";
  outside.host.answers = {platform::MessageAnswer::kCancel};
  UserCloses();
  EXPECT_TRUE(form.shown());
  EXPECT_THAT(Messages(), ElementsAre(testing::_, kQuestion));
  EXPECT_THAT(outside.server.error_askers, Contains("ZEMLO_CustMaint.VemtMessage_DataReady"));
}

TEST_F(CustMaintTest, ClosesWhenTheServerDoesNotAnswerInTime) {
  OpenIndividual();
  UserChangesAName();
  UserSaves();
  outside.server.TimesOut();
  outside.RunEvents();
  EXPECT_FALSE(form.shown());
  EXPECT_FALSE(form.saved());
  EXPECT_THAT(Messages(), ElementsAre("The server did not answer."));
}

TEST_F(CustMaintTest, ReportsAnAnswerThatNamesNoCustomer) {
  OpenIndividual();
  UserChangesAName();
  UserSaves();
  outside.server.ReplyForApplication("Another");
  outside.RunEvents();
  EXPECT_TRUE(form.shown()) << "that was for another application";
  outside.server.ReplyWithNothing();
  outside.RunEvents();
  EXPECT_FALSE(form.shown());
  EXPECT_FALSE(form.saved());
  EXPECT_THAT(outside.errors.Procedures(), ElementsAre("ZEMLO_CustMaint.vemtMessage_DataReady"));
}

TEST_F(CustMaintTest, TakesABlankIdForNoCustomerAndStillTellsOfItsLetters) {
  const fakes::ScriptedReply answers[] = {
      {},
      fakes::ScriptedReply::With("Customer", {}),
      fakes::ScriptedReply::With("Customer", {{{"CUST_ID", " "}, {"FINALIST_IND", 0}}})};
  for (auto answer : answers) {
    outside.host.messages.clear();
    outside.errors.reports.clear();
    OpenIndividual();
    UserChangesAName();
    UserSaves();
    outside.server.Reply(
        std::move(answer).And("XML_ROW", {{{"MEMO", "<XML_ROW><XML_COL>3</XML_COL></XML_ROW>"}}}));
    outside.RunEvents();
    EXPECT_FALSE(form.shown());
    EXPECT_FALSE(form.saved());
    EXPECT_THAT(Messages(), ElementsAre("3 letters corrected and scheduled for tonight's batch"));
    EXPECT_THAT(outside.errors.Procedures(), ElementsAre("ZEMLO_CustMaint.vemtMessage_DataReady"));
  }
}

TEST_F(CustMaintTest, TellsHowManyLettersGoOutAgain) {
  struct Case {
    const char* memo;
    bool authorized;
    std::vector<std::string> messages;
  };
  const Case cases[] = {
      {"<XML_ROW><XML_COL>3</XML_COL><XML_COL>9</XML_COL></XML_ROW>",
       true,
       {"3 letters corrected and scheduled for tonight's batch"}},
      {"<XML_ROW><XML_COL>3</XML_COL></XML_ROW>", false, {}},
      {"<XML_ROW><XML_COL>0</XML_COL></XML_ROW>", true, {}},
      {"<XML_ROW/>", true, {}},
      {"", true, {}},
      {"<XML_ROW><XML_COL> </XML_COL></XML_ROW>", true, {}},
      {"<XML_ROW><XML_COL>none</XML_COL></XML_ROW>", true, {}},
  };
  for (const auto& [memo, authorized, messages] : cases) {
    outside.host.messages.clear();
    outside.utilities.withheld_rights = {};
    if (!authorized) outside.utilities.withheld_rights = {"UpdateCustNotify"};
    ZEMLO_CustMaint dialog(outside.services(), "Letters");
    dialog.SetCustomerType("I");
    dialog.SetCustomerType();
    const auto rows = fakes::RowsOf("CUSTOMER", {Individual()});
    rows->MoveFirst();
    MoveCustomerEditInfo(outside.services(), *rows, dialog);
    dialog.SetCustomerMode("UPD");
    dialog.Activate();
    dialog.mTxtCust[2].SetText("SMYTHE");
    dialog.mCmdOption[0].UserClicks();
    outside.server.Reply(
        fakes::ScriptedReply::With("Customer", {{{"CUST_ID", "100002"}, {"FINALIST_IND", 0}}})
            .And("XML_ROW", {{{"MEMO", memo}}}));
    outside.RunEvents();
    EXPECT_EQ(Messages(), messages) << memo;
    EXPECT_FALSE(dialog.shown());
  }
  EXPECT_THAT(outside.errors.reports, IsEmpty());
}

TEST_F(CustMaintTest, CopiesOneAddressIntoTheOther) {
  OpenIndividual();
  Text(10).SetText("9 NEW RD");
  form.mCboState[1].Code("OK");
  form.mLblCounty[1].Tag = "9";
  Command(option_number::kSameAsResident).UserClicks();
  EXPECT_EQ(Text(6).text(), "9 NEW RD");
  EXPECT_EQ(Text(9).text(), "89214");
  EXPECT_EQ(form.State(kMailingSide), "OK");
  EXPECT_FALSE(form.mChkReturnMail[0].ticked());
  EXPECT_EQ(form.mLblCounty[0].Tag, "9");
}

TEST_F(CustMaintTest, ShowsACountyOnlyBesideItsZip) {
  OpenIndividual();
  const auto county = [&] { return form.mLblCounty[0].caption() + "/" + form.mLblCounty[0].Tag; };
  Text(9).SetText("89033");
  EXPECT_EQ(county(), "/");
  Text(9).SetText("89214-0007");
  EXPECT_EQ(county(), "Hartsfield/22");
}

TEST_F(CustMaintTest, DisablesNamesThatAreKeptElsewhere) {
  auto dealer = Business();
  dealer.emplace_back("DLR_IND", "Y");
  Open(dealer, "B");
  for (const std::size_t field : {0, 1, 3, 4, 5}) EXPECT_FALSE(Text(field).enabled()) << field;
  EXPECT_TRUE(Text(2).enabled());
}

class CustomerEditTest : public MaintainedCustomer {
 protected:
  CustomerEditTest() {
    connection_ = edit.Saved.Connect([this](const std::string& id) { saved.push_back(id); });
  }
  CustomerEdit edit{outside.services(), "Letters"};
  std::vector<std::string> saved;

 private:
  platform::Connection connection_;
};

TEST_F(CustomerEditTest, FetchesACustomerAndTellsWhoWasSaved) {
  outside.host.user_in_form = [&](platform::Form& shown) {
    auto& dialog = dynamic_cast<ZEMLO_CustMaint&>(shown);
    EXPECT_EQ(dialog.caption(), "Updating Selected Customer HATTIE SMITH");
    EXPECT_EQ(dialog.mLblCounty[0].caption(), "Hartsfield");
    EXPECT_EQ(dialog.mPhone.text(), "(405) 521-2485");
    EXPECT_EQ(dialog.mChkReturnMail[0].Tag, "1");
    dialog.mTxtCust[2].SetText("SMYTHE");
    dialog.mCmdOption[0].UserClicks();
    ServerSaves();
  };
  edit.Edit("100002");
  EXPECT_TRUE(edit.IsUnderWay());
  EXPECT_THAT(
      outside.server.LastRequest().Keys(),
      ElementsAre("KORVADSK|key:ELEMENT_NAME|=|CUSTOMERS", "KORVADSK|key:START|=|1", "KORVADSK|key:END|=|20",
                  "KORVADSK|key:SINGLECUSTCRED|=|NO", "KORVADSK|key:CUST_ID|=|100002"));
  outside.server.ReplyWith("Customer", {Individual()});
  outside.RunEvents();
  EXPECT_THAT(saved, ElementsAre("100002"));
  EXPECT_EQ(outside.status.LastText(), "Ready");
  EXPECT_FALSE(edit.IsUnderWay());
  EXPECT_THAT(outside.reference.statements,
              Contains("SELECT CNTY_NM FROM MVR_COUNTY_TAX WHERE CNTY_CD = '22'"));
}

TEST_F(CustomerEditTest, TakesWhoHasALastNameForAPersonAndLeavesTheBusinessNameStored) {
  auto both = Individual();
  both.emplace_back("CUST_BSNS_NM", "LANTERN FUEL");
  outside.host.user_in_form = [&](platform::Form& shown) {
    auto& dialog = dynamic_cast<ZEMLO_CustMaint&>(shown);
    dialog.mTxtCust[2].SetText("SMYTHE");
    dialog.mCmdOption[0].UserClicks();
  };
  edit.Edit("100002");
  outside.server.ReplyWith("Customer", {both});
  outside.RunEvents();
  EXPECT_THAT(Sent(), testing::IsSupersetOf({"CUST_TYP_CD=0", "LAST_NM=SMYTHE"}));
  EXPECT_THAT(Sent(), Not(Contains(testing::StartsWith("CUST_BSNS_NM"))));
}

TEST_F(CustomerEditTest, OpensNothingWithoutTheRightOrWithoutTheCustomer) {
  outside.utilities.withheld_rights = {"CustomerEdit", "CustomerAdd"};
  edit.Edit("100002");
  outside.server.ReplyWith("Customer", {Individual()});
  outside.RunEvents();
  edit.AddBusiness({"ACME", ""});
  outside.utilities.withheld_rights = {};
  edit.Edit("100002");
  outside.server.ReplyWithNothing();
  outside.RunEvents();
  EXPECT_THAT(outside.host.shown_forms, IsEmpty());
  EXPECT_THAT(
      Messages(),
      ElementsAre("Insufficient privileges to Edit customers.", "Insufficient privileges to Add customers.",
                  "The customer is no longer in the register. Choose the customer again."));
  EXPECT_THAT(saved, IsEmpty());
}

TEST_F(CustomerEditTest, OpensWithoutTheNameOfACounty) {
  fakes::FakeServices bare;  // its reference database refuses every statement
  CustomerEdit maintenance(bare.services(), "Letters");
  std::string county = "22";
  bare.host.user_in_form = [&](platform::Form& shown) {
    const auto& dialog = dynamic_cast<ZEMLO_CustMaint&>(shown);
    county = dialog.mLblCounty[0].caption() + "/" + dialog.mLblCounty[0].Tag;
  };
  maintenance.Edit("100002");
  bare.server.ReplyWith("Customer", {Individual()});
  bare.RunEvents();
  EXPECT_EQ(county, "/22");
  EXPECT_THAT(bare.errors.Procedures(), Contains("frmBatchData.GetCountyDescription"));
  EXPECT_THAT(bare.errors.Procedures(), Not(Contains("frmBatchData.MoveCustomerEditInfo")));
}

TEST_F(CustomerEditTest, SeedsANewCustomer) {
  std::vector<std::string> captions;
  outside.host.user_in_form = [&](platform::Form& shown) {
    auto& dialog = dynamic_cast<ZEMLO_CustMaint&>(shown);
    captions.push_back(dialog.caption() + ", " + dialog.mTxtCust[8].text());
    EXPECT_FALSE(dialog.DataChanged);
  };
  edit.AddBusiness({"ACME", "6200010000101", "MILLRACE"});
  edit.AddIndividual({"ANN", "LEE", "", "ENID"});
  edit.AddIndividual({"ANN"});
  EXPECT_THAT(captions, ElementsAre("Adding New Customer ACME, MILLRACE", "Adding New Customer ANN LEE, ENID",
                                    "Adding New Customer  , "));
}

}  // namespace
}  // namespace customers
