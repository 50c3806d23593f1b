#include "composition/frm_batch.h"
#include "composition/frm_letter.h"
#include "tests/workspace/document/workspace_test.h"

namespace workspace {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class LetterRoad : public WorkspaceTest {
 protected:
  LetterRoad() {
    GivenWorkspaceIsOpen();
    GivenTemplate("TAX110.docx");
  }
  void GivenLetterIsAskedFor() {
    UserChoosesCustomer("4711");
    UserPicksLetterType("110");
    UserClicksCreateLetter();
  }
};

TEST_F(LetterRoad, GoesFromTheCustomerToTheHistory) {
  UserChoosesCustomer("4711");
  EXPECT_FALSE(CanCreateLetter());
  UserPicksLetterType("110");
  EXPECT_TRUE(CanCreateLetter());
  UserClicksCreateLetter();
  EXPECT_THAT(LastRequest().FindRecord("XML_CONTEXT_INPUT").Assigned(), ElementsAre("CUST_ID=4711"));

  ServerRepliesWithContext("<XML_CONTEXT><NAME>O'Neil</NAME></XML_CONTEXT>",
                           {{"CUST_ID", "4711"}, {"PRNT_STTS_CD", "P"}, {"ADDR_TYP_CD", 1}});
  EXPECT_THAT(print_.merged, ElementsAre("<XML_CONTEXT><NAME>O'Neil</NAME></XML_CONTEXT>"));

  print_.UserPrints();
  EXPECT_THAT(LastRequest().FindRecord("CORRHIST").Assigned(),
              Contains("XML_CONTEXT=<XML_CONTEXT><NAME>O`Neil</NAME></XML_CONTEXT>"));
  fakes_.server.ReplyWithNothing();
  fakes_.RunEvents();
  EXPECT_EQ(fakes_.status.LastText(), "Ready");
  EXPECT_TRUE(fakes_.status.ready);
  EXPECT_THAT(fakes_.errors.reports, IsEmpty());
  EXPECT_THAT(fakes_.host.messages, IsEmpty());
}

/// A letter about a form of customer 9000.
class LetterAboutAForm : public LetterRoad {
 protected:
  static constexpr const char* kOfMilo =
      "<XML_CONTEXT><CUST_ID>9000</CUST_ID><CUSTOMER_NAME>Milo Fenwright</CUSTOMER_NAME>"
      "<CUSTOMER_ADDR>12 Main St\nLarkspur, KV 88312</CUSTOMER_ADDR></XML_CONTEXT>";

  void UserAsksForTheFormsLetter() {
    UserPicksLetterType("120");
    UserPicksFormType("C");
    UserTypesFormNumber("1234567-8");
    UserClicksCreateLetter();
  }
  void ServerRepliesWithOwner(const std::string& context = kOfMilo) {
    ServerRepliesWithContext(
        context,
        {{"CUST_ID", "9000"}, {"FORM_NBR", "1234567"}, {"FORM_CK_DGT_NBR", "8"}, {"FORM_TYP_CD", "C"}});
  }
  std::vector<std::string> Panel() const {
    return {panel_.customer_id.caption(), panel_.name.caption(),  panel_.address.caption(),
            panel_.city_line.caption(),   panel_.phone.caption(), panel_.fuel_tax_account.caption()};
  }

  CorrespondencePage& page_ = document_.pages().correspondence;
  customers::CustomerPanel& panel_ = page_.panel;
};

// One wrong digit made a tax warrant against somebody else, while the page went on showing the first
// customer.
TEST_F(LetterAboutAForm, OfAnotherCustomerThanThePageShowsIsNotMadeWithoutAsking) {
  document_.FillCustomerField({.CustID = "4711", .CUSTNAME = "ACME", .Phone = "555-0100"}, kPage);
  UserAsksForTheFormsLetter();
  const auto sent = fakes_.server.requests.size();
  fakes_.host.user_at_message = [&](const auto&) { EXPECT_THAT(print_.calls, IsEmpty()); };
  ServerRepliesWithOwner();
  ASSERT_THAT(fakes_.host.messages, SizeIs(1));
  const auto& question = fakes_.host.messages.front();
  EXPECT_THAT(question.text, HasSubstr("Form \"1234567-8\" belongs to 9000 Milo Fenwright.\r\n"
                                       "The page shows 4711 ACME.\r\n"));
  EXPECT_EQ(question.icon, platform::MessageIcon::kQuestion);
  EXPECT_EQ(question.buttons, platform::MessageButtons::kYesNo);
  EXPECT_EQ(question.default_answer, platform::MessageAnswer::kNo);

  EXPECT_THAT(print_.calls, IsEmpty());
  EXPECT_EQ(fakes_.server.requests.size(), sent);
  EXPECT_THAT(Panel(), ElementsAre("4711", "ACME", "", ",  ", "555-0100", ""));
  EXPECT_TRUE(page_.txtFormNum.marked_invalid());
  EXPECT_EQ(fakes_.status.LastText(), "Ready");
  EXPECT_THAT(fakes_.status.reason, HasSubstr("No letter was made."));
  EXPECT_TRUE(CanCreateLetter()) << "once the number is right";
}

TEST_F(LetterAboutAForm, IsMadeForItsOwnCustomerWhereTheUserSaysSo) {
  document_.FillCustomerField({.CustID = "4711", .CUSTNAME = "ACME", .Phone = "555-0100"}, kPage);
  UserAsksForTheFormsLetter();
  fakes_.host.answers = {platform::MessageAnswer::kYes};
  fakes_.host.user_at_message = [&](const auto&) { EXPECT_EQ(panel_.customer_id.caption(), "4711"); };
  ServerRepliesWithOwner();
  EXPECT_TRUE(print_.HasCalled("ShowPreview"));
  EXPECT_THAT(Panel(), ElementsAre("9000", "Milo Fenwright", "12 Main St", "Larkspur, KV 88312", "", ""));
  print_.UserPrints();
  EXPECT_THAT(LastRequest().FindRecord("CORRHIST").Assigned(), Contains("CUST_ID=9000"));
}

TEST_F(LetterAboutAForm, AsksBeforeItShowsWhatIsWrongWithTheData) {
  UserChoosesCustomer("4711");
  UserAsksForTheFormsLetter();
  ServerRepliesWithOwner("<XML_CONTEXT State=\"800000\"/>");
  EXPECT_THAT(fakes_.host.MessageTexts(), ElementsAre(HasSubstr("belongs to 9000.")));
  EXPECT_THAT(fakes_.host.shown_forms, IsEmpty());
}

TEST_F(LetterAboutAForm, ShowsTheFormsCustomerOnAPageThatShowsNone) {
  UserAsksForTheFormsLetter();
  const auto first = panel_.customer_id.LookChanged.Connect([&] { EXPECT_THAT(print_.calls, IsEmpty()); });
  ServerRepliesWithOwner();
  EXPECT_THAT(fakes_.host.messages, IsEmpty());
  EXPECT_TRUE(print_.HasCalled("ShowPreview"));
  EXPECT_THAT(Panel(), ElementsAre("9000", "Milo Fenwright", "12 Main St", "Larkspur, KV 88312", "", ""));
}

TEST_F(LetterAboutAForm, OfThePagesCustomerAsksNothing) {
  document_.FillCustomerField({.CustID = "9000", .CUSTNAME = "MILO", .Phone = "555-0100"}, kPage);
  UserAsksForTheFormsLetter();
  ServerRepliesWithOwner();
  EXPECT_THAT(fakes_.host.messages, IsEmpty());
  EXPECT_THAT(Panel(), ElementsAre("9000", "MILO", "", ",  ", "555-0100", ""));
}

TEST_F(LetterAboutAForm, OfNobodyKnownIsNotMadeForThePagesCustomer) {
  UserChoosesCustomer("4711");
  UserAsksForTheFormsLetter();
  ServerRepliesWithContext("<XML_CONTEXT/>", {{"FORM_NBR", "1234567"}});
  EXPECT_THAT(print_.calls, IsEmpty());
  EXPECT_THAT(fakes_.errors.Procedures(), ElementsAre("ZEMLO_Corresp.CreateNewCorrespondence"));
}

// A letter for the nightly batch could be made on line: the reply enabled the command whatever had been
// chosen meanwhile.
TEST_F(LetterRoad, GivesTheCommandBackOnlyWhereThePageHasWhatALetterNeeds) {
  const std::function<void()> replies[] = {[this] { ServerRepliesWithContext("<XML_CONTEXT/>"); },
                                           [this] {
                                             fakes_.server.ReplyWithError("Customer 4711 has moved.");
                                             fakes_.RunEvents();
                                           }};
  for (const auto& reply : replies) {
    GivenLetterIsAskedFor();
    UserPicksLetterType("130");
    reply();
    EXPECT_FALSE(CanCreateLetter());
  }
}

TEST_F(LetterRoad, LetsTheUserTryAgainAfterAnErrorReply) {
  GivenLetterIsAskedFor();
  GivenCreateLetterIsDisabled();
  fakes_.server.ReplyWithError("Customer 4711 has moved.");
  fakes_.RunEvents();
  EXPECT_THAT(fakes_.host.MessageTexts(), ElementsAre("Customer 4711 has moved."));
  EXPECT_TRUE(CanCreateLetter());
  EXPECT_EQ(fakes_.host.pointer, platform::MousePointer::kNormal);

  const auto sent = fakes_.server.requests.size();
  UserClicksCreateLetter();  // the option still is selected: releasing the button over it counts
  EXPECT_EQ(fakes_.server.requests.size(), sent + 1);
}

TEST_F(LetterRoad, SaysWhenTheServerDidNotAnswerInTime) {
  GivenLetterIsAskedFor();
  fakes_.server.TimesOut();
  fakes_.RunEvents();
  EXPECT_EQ(fakes_.status.LastText(), "Search timed out");
}

TEST_F(LetterRoad, EnablesTheLetterActionsOfTheTrackingPageAfterEveryReply) {
  auto& frame = document_.pages().tracking.letter_action;
  const std::function<void()> replies[] = {
      [this] { fakes_.server.ReplyWithNothing(); },
      [this] { fakes_.server.ReplyWithError("no"); },
      [this] { fakes_.server.ReplyForApplication("Another"); },
  };
  for (const auto& reply : replies) {
    GivenLetterIsAskedFor();
    frame.SetEnabled(false);
    reply();
    fakes_.RunEvents();
    EXPECT_TRUE(frame.enabled());
  }
}

TEST_F(LetterRoad, ShowsTheFieldsInErrorAndMakesNoLetter) {
  GivenLetterIsAskedFor();
  GivenCreateLetterIsDisabled();
  std::vector<std::string> fields;
  fakes_.host.user_in_form = [&](platform::Form& form) {
    const auto& top = dynamic_cast<composition::frmBatch&>(form).tvw.top_level();
    for (const auto* field : top.at(0)->children) fields.push_back(field->text);
  };
  ServerRepliesWithContext("<XML_CONTEXT State=\"800000\"><AMOUNT State=\"400000\"/><NAME/></XML_CONTEXT>");
  EXPECT_THAT(fields, ElementsAre("AMOUNT"));
  EXPECT_TRUE(CanCreateLetter());
  EXPECT_THAT(print_.calls, IsEmpty());
  EXPECT_THAT(fakes_.errors.reports, IsEmpty());
}

TEST_F(LetterRoad, RecordsALetterThatWasPrintedFromTheFormItWasCompletedIn) {
  fakes_.host.user_in_form = [this](platform::Form& form) {
    auto& letter = dynamic_cast<composition::frmLetter&>(form);
    letter.sdgUserBookmark.UserEdits(0, "Ann");
    letter.cmdOK.UserClicks();
    print_.UserPrints();
  };
  GivenLetterIsAskedFor();
  const auto sent = fakes_.server.requests.size();
  ServerRepliesWithContext(R"(<XML_CONTEXT State="8"><U_NAME State="8"/></XML_CONTEXT>)");
  ASSERT_EQ(fakes_.server.requests.size(), sent + 1) << "recorded once";
  EXPECT_THAT(LastRequest().FindRecord("CORRHIST").rows->Text(0, "XML_CONTEXT"), HasSubstr(">Ann</U_NAME>"));
  EXPECT_THAT(print_.merged, SizeIs(1));
}

TEST_F(LetterRoad, RecordsNothingWhereTheUserCancelsTheForm) {
  GivenLetterIsAskedFor();
  GivenCreateLetterIsDisabled();
  const auto sent = fakes_.server.requests.size();
  ServerRepliesWithContext(R"(<XML_CONTEXT State="8"><U_NAME State="8"/></XML_CONTEXT>)");
  EXPECT_EQ(fakes_.server.requests.size(), sent);
  EXPECT_TRUE(CanCreateLetter());
  EXPECT_THAT(print_.calls, IsEmpty());
}

// The mark went when the list was left, and nothing said why "Create Letter" was grey.
TEST_F(LetterRoad, KeepsTheMarkOfAListThatIsLeftWithAWrongText) {
  auto& list = document_.pages().correspondence.ZEMLO_LetterType;
  UserChoosesCustomer("4711");
  list.UserEditsText("Bond");
  list.UserLeaves();
  EXPECT_TRUE(list.marked_invalid());
  list.UserEditsText("Tax");
  list.UserLeaves();
  EXPECT_FALSE(list.marked_invalid());
  EXPECT_TRUE(CanCreateLetter());

  auto& searched = document_.pages().tracking.ZEMLO_FormTypeCodes;
  searched.UserEditsText("Citatoin");
  searched.UserLeaves();
  EXPECT_TRUE(searched.marked_invalid());
}

TEST_F(LetterRoad, ClearsThePage) {
  UserChoosesCustomer("4711");
  UserPicksLetterType("110");
  UserClicks(CorrespondencePage::kClear);
  EXPECT_EQ(document_.pages().correspondence.panel.customer_id.caption(), "");
  EXPECT_FALSE(CanCreateLetter());
  EXPECT_THAT(fakes_.host.messages, IsEmpty());

  GivenLetterIsAskedFor();
  EXPECT_THAT(fakes_.server.requests, SizeIs(2));
}

// Esc on the form threw away what had been typed, and a file and a print needed it typed twice.
TEST_F(LetterRoad, OffersWhatWasEnteredWhenTheSameLetterComesAgainBeforeAnotherOne) {
  constexpr const char* kAsks = "<XML_CONTEXT State=\"8\"><U_DAY State=\"8\"/></XML_CONTEXT>";
  const auto value = [](platform::Form& form) -> std::string {
    return dynamic_cast<composition::frmLetter&>(form).Entries().values["U_DAY"];
  };
  std::vector<std::string> offered;
  fakes_.host.user_in_form = [&](platform::Form& form) {
    offered.push_back(value(form));
    auto& values = dynamic_cast<composition::frmLetter&>(form).sdgUserBookmark;
    if (offered.back().empty()) values.UserEdits(0, "Monday");
    if (offered.size() == 2) dynamic_cast<composition::frmLetter&>(form).cmdOK.UserClicks();
    if (offered.size() == 2) print_.UserPrints();
  };
  const auto letter_for = [&](const std::string& customer) {
    UserChoosesCustomer(customer);
    UserPicksLetterType("110");
    UserClicksCreateLetter();
    ServerRepliesWithContext(kAsks, {{"CUST_ID", customer}});
  };
  letter_for("4711");  // and the form is closed by its close box
  letter_for("4711");  // printed
  fakes_.server.ReplyWithNothing();
  fakes_.RunEvents();
  letter_for("4711");
  letter_for("4712");
  letter_for("4711");
  EXPECT_THAT(offered, ElementsAre("", "Monday", "Monday", "", ""));
  EXPECT_THAT(fakes_.host.messages, IsEmpty());
}

TEST_F(LetterRoad, ProposesLetterCustomerAndDayForAFile) {
  GivenLetterIsAskedFor();
  ServerRepliesWithContext("<XML_CONTEXT><CUSTOMER_NAME>A/B: \"Caf\u00E9\"</CUSTOMER_NAME></XML_CONTEXT>");
  const auto today = platform::DateText(fakes_.clock.Today());
  EXPECT_THAT(print_.proposed_names, ElementsAre("Tax liability - A-B- -Caf\u00E9- - " + today));
}

}  // namespace
}  // namespace workspace
