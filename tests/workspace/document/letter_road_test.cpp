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

TEST_F(LetterRoad, TakesTheDocumentOfADocumentLetter) {
  UserPicksLetterType("120");
  UserPicksFormType("R");
  EXPECT_FALSE(CanCreateLetter());
  UserTypesFormNumber("1234567-8");
  EXPECT_TRUE(CanCreateLetter());
  UserClicksCreateLetter();
  EXPECT_THAT(LastRequest().FindRecord("XML_CONTEXT_INPUT").Assigned(),
              ElementsAre("FORM_NBR=1234567", "FORM_CK_DGT_NBR=8", "RCPT_NBR=1234567", "RCPT_CK_DGT_NBR=8",
                          "FORM_TYP_CD=R"));
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

TEST_F(LetterRoad, ChecksATextThatIsTypedOverAPick) {
  UserChoosesCustomer("4711");
  UserPicksLetterType("110");
  document_.pages().correspondence.ZEMLO_LetterType.UserEditsText("Tax li");
  EXPECT_FALSE(CanCreateLetter());
  EXPECT_THAT(document_.CheckMessages(kPage), ElementsAre("Please select a correspondence type"));
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

TEST_F(LetterRoad, ChecksThePagesFieldsAsTheyChange) {
  auto& tracking = document_.pages().tracking;
  tracking.OptLetterStatus[TrackingPage::kAll].UserClicks();
  tracking.txtBatch.SetText("7");
  EXPECT_THAT(document_.CheckMessages(kTracking), IsEmpty());
  tracking.txtBatch.SetText("");
  EXPECT_THAT(document_.CheckMessages(kTracking), ElementsAre("Please select criteria"));

  auto& batch = document_.pages().batch;
  batch.OptBatchDate[BatchPage::kLastNight].UserClicks();
  batch.OptBatchStatus[0].UserClicks();
  EXPECT_THAT(document_.CheckMessages(PageIndex::kBatch), IsEmpty());
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

}  // namespace
}  // namespace workspace
