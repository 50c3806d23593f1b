#include "customers/maintenance/address_verdict.h"

#include "tests/customers/maintenance/maintained_customer.h"

namespace customers {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;
using testing::StartsWith;

class AddressVerdictTest : public MaintainedCustomer {
 protected:
  static constexpr std::size_t kMail = 0;
  static constexpr std::size_t kRes = 1;

  /// The user has changed one address, or both, and asks to save.
  void UserSavesChanged(bool mailing, bool resident) {
    if (mailing) Text(6).SetText("12 DEPOT ST");
    if (resident) Text(10).SetText("7 ORCHID RD");
    UserSaves();
    EXPECT_THAT(Sent(), IsSupersetOf({"ACTION=UPDF", "FINALIST_IND=-1"}));
  }
  std::vector<std::string> Suggested(const AddressSide& side) {
    std::vector<std::string> texts;
    for (auto field = side.SuggestedLine1(); field <= side.SuggestedZip(); ++field)
      texts.push_back(Text(field).text());
    return texts;
  }
};

TEST_F(AddressVerdictTest, TellsWhichAddressDidNotPassAndWhatIsSuggested) {
  const std::string mailing = "The mailing address entered did not pass Finalist address verification.";
  const std::string resident = "The resident address entered did not pass Finalist address verification.";
  const std::string neither =
      "Neither the resident address entered nor the mailing address entered passed Finalist address "
      "verification.";
  struct Case {
    int verdict;
    bool has_mailing;
    bool has_resident;
    std::string message;
  };
  const Case cases[] = {
      {1, false, false, mailing + "\r\nNo suggested address is available."},
      {1, true, false, mailing + "\r\nThe suggested address is displayed."},
      {2, false, false, resident + "\r\nNo suggested address is available."},
      {2, false, true, resident + "\r\nThe suggested address is displayed."},
      {3, false, false,
       neither +
           "\r\nNo suggested mailing address is available\r\nNo suggested resident address is available."},
      {3, true, false,
       neither +
           "\r\nThe suggested mailing address is displayed.\r\nNo suggested resident address is available."},
      {3, false, true,
       neither +
           "\r\nNo suggested mailing address is available.\r\nThe suggested resident address is displayed."},
      {3, true, true,
       neither +
           "\r\nThe suggested mailing address is displayed.\r\nThe suggested resident address is displayed."},
  };
  OpenIndividual();
  for (const auto& [verdict, has_mailing, has_resident, message] : cases) {
    Text(6).SetText(Text(6).text() + "1");
    UserSaves();
    outside.host.messages.clear();
    fakes::Row suggestions;
    if (has_mailing) suggestions.emplace_back("MAIL_ADDR_1", "12 DEPOT AVE");
    if (has_resident) suggestions.emplace_back("RES_ADDR_1", "7 ORCHARD RD");
    ServerFinds(verdict, suggestions);
    EXPECT_THAT(Messages(), ElementsAre(message));
    EXPECT_EQ(outside.host.messages[0].icon, platform::MessageIcon::kNone);
    EXPECT_EQ(form.mFraFinalist[kMail].enabled(), has_mailing) << message;
    EXPECT_EQ(form.mFraFinalist[kRes].enabled(), has_resident) << message;
    EXPECT_EQ(Command(0).caption(), "Save");
    EXPECT_TRUE(Command(0).enabled());
    EXPECT_TRUE(Command(1).enabled());
    EXPECT_TRUE(form.mFraAddress[kMail].enabled());
    EXPECT_TRUE(form.shown());
  }
}

TEST_F(AddressVerdictTest, ShowsTheSuggestedAddressBesideTheEnteredOne) {
  OpenNew("I");
  Text(0).SetText("HATTIE");
  Text(2).SetText("MERR");
  EnterMailing();
  Enter(kResidentSide, "7 ORCHID RD", "OAKHAVEN", "89214");
  UserSaves();
  ServerFinds(1, MailingSuggestion());
  EXPECT_THAT(Suggested(kMailingSide), ElementsAre("12 DEPOT AVE", "STE 4", "MILLRACE", "KV", "890331212"));
  EXPECT_EQ(form.mLblCounty[2].caption(), "Kestrel");
  EXPECT_EQ(form.mLblCounty[2].Tag, "20");
  EXPECT_EQ(form.mLblCounty[1].caption(), "Oak") << "the other address had no county yet";
  // The resident address was entered as well, and passed: it stands there as it will be stored.
  EXPECT_THAT(Suggested(kResidentSide), ElementsAre("7 ORCHID RD", "", "OAKHAVEN", "KV", "89214"));
  EXPECT_EQ(form.mLblCounty[3].Tag, "22");
  EXPECT_FALSE(form.mFraFinalist[kRes].enabled());
}

TEST_F(AddressVerdictTest, StoresTheMailingAddressAsEnteredWhereOnlyTheResidentOneFailed) {
  OpenIndividual();
  UserSavesChanged(/*mailing=*/true, /*resident=*/true);
  ServerFinds(2, ResidentSuggestion());
  EXPECT_THAT(Suggested(kMailingSide), ElementsAre("12 DEPOT ST", "", "OAKHAVEN", "KV", "892141234"));
  EXPECT_FALSE(form.mFraFinalist[kMail].enabled());
  form.mChkAccept[kRes].UserClicks();
  UserSaves();
  EXPECT_THAT(Sent(), IsSupersetOf({"ACTION=UPD", "MAIL_ADDR_1=12 DEPOT ST", "RES_ADDR_1=7 ORCHARD RD",
                                    "RES_ZIP_CD=892140007", "RES_CNTY_CD=22"}));
  EXPECT_THAT(Sent(), Not(Contains(StartsWith("FINALIST"))));
}

TEST_F(AddressVerdictTest, CountsABlankFirstLineAsNoSuggestion) {
  OpenIndividual();
  UserSavesChanged(true, false);
  ServerFinds(1, {{"MAIL_ADDR_1", "  "}, {"MAIL_ADDR_2", "STE 4"}, {"MAIL_CITY", "MILLRACE"}});
  EXPECT_THAT(Suggested(kMailingSide), ElementsAre("No suggestion available.", "", "", "", ""));
  EXPECT_FALSE(form.mFraFinalist[kMail].enabled());
}

TEST_F(AddressVerdictTest, AsksAgainOnlyWhereWhatWasSentIsEdited) {
  OpenIndividual();
  UserSavesChanged(true, false);
  ServerFinds(1, MailingSuggestion());
  UserSaves();
  EXPECT_THAT(Sent(), Contains("ACTION=UPD")) << "the same address, known to fail, is stored as it is";
  ServerFinds(1, MailingSuggestion());
  Text(6).SetText("13 DEPOT ST");
  EXPECT_EQ(Command(0).caption(), "Verify && Save");
  UserSaves();
  EXPECT_THAT(Sent(), Contains("ACTION=UPDF"));
  ServerFinds(1, MailingSuggestion());
  form.mCboState[kRes].Code("OK");
  for (int attempt = 0; attempt < 2; ++attempt) {
    UserSaves();
    EXPECT_THAT(Sent(), Contains("ACTION=UPDF")) << "a refused save has verified nothing";
    outside.server.ReplyWithError("No verifier answers.");
    outside.RunEvents();
  }
}

TEST_F(AddressVerdictTest, NeverAsksAgainWhenBothSuggestionsAreAccepted) {
  OpenIndividual();
  UserSavesChanged(true, true);
  auto both = MailingSuggestion();
  for (const auto& value : ResidentSuggestion()) both.push_back(value);
  ServerFinds(3, both);
  for (auto& box : form.mChkAccept) box.UserClicks();
  Text(6).SetText("99 NOWHERE RD");
  UserSaves();
  EXPECT_THAT(Sent(), IsSupersetOf({"ACTION=UPD", "MAIL_ADDR_1=12 DEPOT AVE", "RES_ADDR_1=7 ORCHARD RD"}));
  ServerSaves();
  EXPECT_FALSE(form.shown());
  EXPECT_TRUE(form.saved());
}

TEST_F(AddressVerdictTest, TakesATickOffASuggestionThatIsReplaced) {
  OpenIndividual();
  UserSavesChanged(true, false);
  ServerFinds(1, MailingSuggestion());
  form.mChkAccept[kMail].UserClicks();
  Text(10).SetText("7 ORCHID RD");
  UserSaves();  // the accepted mailing address and a new resident one
  ServerFinds(3, ResidentSuggestion());
  EXPECT_FALSE(form.mChkAccept[kMail].ticked());
  UserSaves();
  EXPECT_THAT(Sent(), Not(Contains("MAIL_ADDR_1=No suggestion available.")));
}

TEST_F(AddressVerdictTest, LeavesAnAcceptedSuggestionWhereTheOtherAddressFails) {
  OpenIndividual();
  UserSavesChanged(true, false);
  ServerFinds(1, MailingSuggestion());
  form.mChkAccept[kMail].UserClicks();
  Text(10).SetText("7 ORCHID RD");
  UserSaves();
  ServerFinds(2, ResidentSuggestion());
  UserSaves();
  EXPECT_THAT(Sent(), Contains("MAIL_ADDR_1=12 DEPOT AVE"));
}

TEST_F(AddressVerdictTest, KeepsAskingBeforeWhatDidNotPassIsLost) {
  OpenIndividual();
  UserSavesChanged(true, false);
  ServerFinds(1);
  Text(6).SetText("12 DEPOT STR");
  UserSaves();
  ServerFinds(1);  // no suggestion, as before
  EXPECT_TRUE(form.DataChanged);
  outside.host.messages.clear();
  outside.host.answers = {platform::MessageAnswer::kCancel};
  UserCloses();
  EXPECT_THAT(Messages(), ElementsAre("Would you like to save changes to your data ?"));
  EXPECT_TRUE(form.shown());
}

TEST_F(AddressVerdictTest, SaysNothingOfAVerdictNobodyKnows) {
  OpenIndividual();
  UserSavesChanged(true, false);
  ServerFinds(9, MailingSuggestion());
  EXPECT_THAT(Messages(), IsEmpty());
  EXPECT_THAT(Suggested(kMailingSide), ElementsAre("", "", "", "", ""));
  EXPECT_TRUE(Command(0).enabled());
  EXPECT_TRUE(form.shown());
}

}  // namespace
}  // namespace customers
