#include "tests/workspace/document/workspace_test.h"

namespace workspace {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

class Commands : public WorkspaceTest {
 protected:
  void GivenLetterCanBeCreated() {
    GivenTemplate("TAX110.docx");
    UserChoosesCustomer("4711");
    UserPicksLetterType("110");
  }
};

// A second click used to replace the pending request, and the first letter came to nothing.
TEST_F(Commands, SendOneRequestForADoubleClick) {
  GivenWorkspaceIsOpen();
  GivenLetterCanBeCreated();
  const auto sent = fakes_.server.requests.size();
  UserClicksCreateLetter();
  fakes_.status.texts.clear();
  UserClicksCreateLetter();
  document_.SelectNewType();
  EXPECT_EQ(fakes_.server.requests.size(), sent + 1);
  EXPECT_EQ(fakes_.status.LastText(), "Requesting bookmark information");
  EXPECT_EQ(fakes_.host.pointer, platform::MousePointer::kHourglass);

  ServerRepliesWithContext("<XML_CONTEXT/>");
  EXPECT_TRUE(print_.HasCalled("ShowPreview"));
  EXPECT_EQ(fakes_.host.pointer, platform::MousePointer::kNormal);
  UserClicksCreateLetter();
  EXPECT_EQ(fakes_.server.requests.size(), sent + 2);
}

// The template folder used to stay unknown for the session, and no template was downloaded.
TEST_F(Commands, WaitForTheTemplateFolder) {
  document_.Initialize();
  document_.Show();
  GivenLetterCanBeCreated();
  UserClicksCreateLetter();
  EXPECT_THAT(fakes_.server.requests, SizeIs(1));
  EXPECT_EQ(fakes_.status.LastText(), "Requesting Network Path.");
  EXPECT_THAT(fakes_.host.messages, IsEmpty());

  fakes_.server.ReplyWith("XML_CONTEXT",
                          {{{"XML_CONTEXT", "<X><L_TEMPLATE_PATH>srv</L_TEMPLATE_PATH></X>"}}});
  fakes_.RunEvents();
  EXPECT_EQ(document_.parts().templates.server_folder(), "srv\\");
  UserClicksCreateLetter();
  EXPECT_THAT(fakes_.server.requests, SizeIs(2));
}

TEST_F(Commands, AwaitNothingOfAWorkspaceThatWasStartedAgain) {
  document_.Initialize();
  fakes_.server.on_send = [](const auto&) {
    throw platform::Failure(platform::Failure::Kind::kUnavailable, "no server");
  };
  document_.Initialize();
  EXPECT_FALSE(document_.pending_request().IsAwaited());
  EXPECT_EQ(fakes_.host.pointer, platform::MousePointer::kNormal);
}

// A failure of the letter before went on standing in the window while the next one was made.
TEST_F(Commands, MakeWhatWasToldOfTheOnesBeforeGo) {
  GivenWorkspaceIsOpen();
  auto& page = document_.pages().tracking;
  const int before = fakes_.status.commands;
  page.clear.UserClicks();
  page.sdgGrid.UserSelects({});
  EXPECT_EQ(fakes_.status.commands, before) << "it sends nothing";
  UserChoosesCustomer("4711", kTracking);
  const int chosen = fakes_.status.commands;
  page.OptLetterStatus[TrackingPage::kAll].UserClicks();
  page.search.UserClicks();
  EXPECT_EQ(fakes_.status.commands, chosen + 1);
  page.search.UserClicks();
  EXPECT_EQ(fakes_.status.commands, chosen + 1) << "dropped while a reply is awaited";
}

TEST_F(Commands, StayDisabledWhileNothingHandlesThem) {
  GivenWorkspaceIsOpen();
  auto& pages = document_.pages();
  const std::vector<platform::Control*> controls = {
      &pages.batch.OptBatchAct[BatchPage::kPrintTaxLiability],
      &pages.batch.OptBatchAct[BatchPage::kBatchDetails],
  };
  for (auto* control : controls) {
    EXPECT_FALSE(control->enabled());
    control->SetEnabled(true);
    EXPECT_FALSE(control->enabled());
  }
}

TEST_F(Commands, SayWhyTheyAreDisabled) {
  GivenWorkspaceIsOpen();
  auto& pages = document_.pages();
  auto& online = pages.correspondence.OptOnline;
  auto& tracking = pages.tracking;
  const auto why = [](const platform::Control& control) {
    return control.enabled() ? "enabled" : control.why_disabled();
  };
  EXPECT_EQ(why(online[CorrespondencePage::kCreateLetter]), "Please select a correspondence type");
  EXPECT_EQ(why(tracking.search), "Please select criteria\nLetter option is required");
  EXPECT_EQ(why(online[CorrespondencePage::kViewLetter]), "No letters are listed. Search for some first.");
  EXPECT_THAT(why(pages.batch.OptBatchAct[0]), testing::HasSubstr("does not do this yet"));

  fakes_.utilities.values[{"LTRACTION", "VLT"}] = "F";
  fakes_.utilities.values[{"LTRACTION", "PRL"}] = "F";
  fakes_.server.CompleteSynchronisation();
  fakes_.RunEvents();
  fakes_.utilities.descriptions[{"LTRPRNTCD", "P"}] = "Printed";
  tracking.sdgGrid.Bind(fakes::RowsOf(
      "CORRHIST", {{{"SEQ_NBR", 1}, {"PRNT_STTS_CD", "P"}}, {{"SEQ_NBR", 2}, {"PRNT_STTS_CD", "F"}}}));
  auto& view = tracking.OptLetter[TrackingPage::kViewLetter];
  EXPECT_EQ(why(view), "Select a letter in the list first.");
  tracking.sdgGrid.UserSelects({0, 1});
  EXPECT_EQ(why(view), "This goes with one letter only. Select one in the list.");
  EXPECT_EQ(why(tracking.OptLetter[TrackingPage::kReprintLocal]),
            "Letters with the print status \"Printed\" do not allow this. That is 1 of the 2 selected.");
  tracking.sdgGrid.UserSelects({0});
  EXPECT_EQ(why(view), "Letters with the print status \"Printed\" do not allow this.");

  GivenLetterCanBeCreated();
  pages.correspondence.panel.EnableSelection(false);
  EXPECT_EQ(why(pages.correspondence.panel.select_customer),
            "Clear the page first, then choose another customer.");
  UserClicksCreateLetter();
  EXPECT_EQ(why(view), "The server's reply is awaited. Requesting bookmark information");
}

TEST_F(Commands, ClearTheTrackingPage) {
  GivenWorkspaceIsOpen();
  auto& page = document_.pages().tracking;
  UserPicksLetterType("120", kTracking);
  page.txtFormNum.SetText("1234567");
  page.txtBatch.SetText("7");
  page.clear.UserClicks();
  EXPECT_EQ(page.ZEMLO_LetterType.GetText() + page.txtFormNum.text() + page.txtBatch.text(), "");
}

}  // namespace
}  // namespace workspace
