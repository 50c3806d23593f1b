#include "customers/maintenance/save_request.h"

#include "tests/customers/maintenance/maintained_customer.h"

namespace customers {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsSupersetOf;
using testing::Not;
using testing::StartsWith;

class SaveRequestTest : public MaintainedCustomer {
 protected:
  /// "Verify && Save" is enabled once a text was touched.
  void UserTouchesAText() {
    const auto text = Text(6).text();
    Text(6).SetText(text + "X");
    Text(6).SetText(text);
  }
};

TEST_F(SaveRequestTest, SendsAnIndividualsPhoneWithAllThatIsNoName) {
  OpenIndividual();
  form.mPhone.SetText("(405) 521 2486");
  UserTouchesAText();
  UserSaves();
  const auto& request = outside.server.LastRequest();
  EXPECT_EQ(request.type, 8);
  EXPECT_EQ(request.application, "ZEMLO_Corresp");
  EXPECT_EQ(request.version, "1.0");
  EXPECT_EQ(request.user_id, "OFFICER1");
  EXPECT_TRUE(request.was_built);
  EXPECT_THAT(request.Keys(), ElementsAre("KORVADSK|key:UPDT_NBR|=|7"));
  EXPECT_THAT(Sent(), ElementsAre("CUST_ID=100002", "ACTION=UPD", "CUST_TYP_CD=0", "PHN_NBR=4055212486",
                                  "ACCNT_NBR=6200010000201", "MAIL_ADDR_1=77 ORCHARD RD",
                                  "MAIL_ADDR_2=", "MAIL_CITY=OAKHAVEN", "MAIL_ZIP_CD=892141234", "MAIL_ST=KV",
                                  "MAIL_CNTY_CD=22", "RES_ADDR_1=77 ORCHARD RD", "RES_ADDR_2=",
                                  "RES_CITY=OAKHAVEN", "RES_ZIP_CD=89214", "RES_ST=KV", "RES_CNTY_CD=22"));
  EXPECT_TRUE(form.flags.PhoneChanged);
  EXPECT_FALSE(form.flags.AccountNumberChanged);
}

TEST_F(SaveRequestTest, SendsNamesThatDifferInMoreThanTheirCase) {
  OpenIndividual();
  Text(2).SetText("Smith");
  Text(0).SetText("HETTIE");
  Text(1).SetText("");
  UserSaves();
  EXPECT_THAT(Sent(), IsSupersetOf({"FIRST_NM=HETTIE", "MID_NM="}));
  EXPECT_THAT(Sent(), Not(Contains(StartsWith("LAST_NM"))));
  EXPECT_THAT(Sent(), Not(Contains(StartsWith("FINALIST"))));
}

TEST_F(SaveRequestTest, SetsAFlagForEachValueThatCanBeEmptied) {
  struct Case {
    const char* type;
    std::size_t field;
    bool ChangeFlags::*flag;
  };
  const Case cases[] = {
      {"I", 1, &ChangeFlags::MiddleNameChanged},  {"I", 3, &ChangeFlags::SuffixNameChanged},
      {"I", 7, &ChangeFlags::MailAddr2Changed},   {"I", 11, &ChangeFlags::ResAddr2Changed},
      {"B", 5, &ChangeFlags::ContactNameChanged},
  };
  constexpr bool ChangeFlags::*kAll[] = {&ChangeFlags::MiddleNameChanged, &ChangeFlags::SuffixNameChanged,
                                         &ChangeFlags::PhoneChanged,      &ChangeFlags::AccountNumberChanged,
                                         &ChangeFlags::ResAddr2Changed,   &ChangeFlags::MailAddr2Changed,
                                         &ChangeFlags::ContactNameChanged};
  for (const auto& [type, field, flag] : cases) {
    ZEMLO_CustMaint dialog(outside.services(), "Letters");
    dialog.SetCustomerType(type);
    dialog.SetCustomerType();
    const auto rows = fakes::RowsOf("CUSTOMER", {*type == 'B' ? Business() : Individual()});
    rows->MoveFirst();
    MoveCustomerEditInfo(outside.services(), *rows, dialog);
    dialog.SetCustomerMode("UPD");
    dialog.Activate();
    dialog.mTxtCust[field].SetText("X");
    dialog.mCmdOption[0].UserClicks();
    for (const auto other : kAll) EXPECT_EQ(dialog.flags.*other, other == flag) << field;
  }
}

TEST_F(SaveRequestTest, AddsABusinessWithWhatWasEntered) {
  OpenNew("B");
  EXPECT_EQ(form.caption(), "Adding New Customer ");
  Text(4).SetText("MEADOW & SONS");
  EnterMailing();
  Text(9).SetText("89033-1212");
  UserSaves();
  EXPECT_THAT(Sent(), ElementsAre("ACTION=ADDF", "FINALIST_IND=-1", "CUST_TYP_CD=1",
                                  "CUST_BSNS_NM=MEADOW & SONS", "CO_CNTCT_NM=", "PHN_NBR=", "ACCNT_NBR=",
                                  "MAIL_ADDR_1=12 DEPOT ST", "MAIL_ADDR_2=", "MAIL_CITY=MILLRACE",
                                  "MAIL_ZIP_CD=890331212", "MAIL_ST=KV", "MAIL_CNTY_CD=", "RES_CNTY_CD="));
  EXPECT_THAT(outside.server.LastRequest().Keys(), ElementsAre());
}

TEST_F(SaveRequestTest, AddsWithoutVerificationWhatWasVerified) {
  OpenNew("B");
  Text(4).SetText("MEADOW & SONS");
  EnterMailing();
  UserSaves();
  ServerFinds(1, MailingSuggestion());
  form.mChkAccept[0].UserClicks();
  UserSaves();
  EXPECT_THAT(Sent(), IsSupersetOf({"ACTION=ADD", "FUEL_TAX_IND=Y", "MAIL_ADDR_1=12 DEPOT AVE",
                                    "MAIL_ADDR_2=STE 4", "MAIL_ZIP_CD=890331212", "MAIL_CNTY_CD=20"}));
  EXPECT_THAT(Sent(), Not(Contains(StartsWith("RES_ADDR_1"))));
  EXPECT_THAT(outside.server.LastRequest().Keys(), ElementsAre("KORVADSK|key:FINALIST_ACCEPT|=|1"));
}

TEST_F(SaveRequestTest, SendsAMarkOfReturnedMailOnlyWhereItChanged) {
  OpenIndividual();
  form.mChkReturnMail[0].UserClicks();
  UserSaves();
  EXPECT_THAT(Sent(), Contains("MAIL_RTND_IND=N"));
  EXPECT_THAT(Sent(), Not(Contains(StartsWith("RES_RTND_IND"))));
}

TEST(Snapshots, PartAKeyFromItsValueAtTheFirstMark) {
  EXPECT_EQ(KeyOf("CUST_BSNS_NM::A::B"), "CUST_BSNS_NM");
  EXPECT_EQ(ValueOf("CUST_BSNS_NM::A::B"), "A::B");
  EXPECT_EQ(ValueOf("FIRST_NM::"), "");
}

}  // namespace
}  // namespace customers
