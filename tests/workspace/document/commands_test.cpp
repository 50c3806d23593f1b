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
  EXPECT_EQ(document_.state().server_template_folder, "srv\\");
  UserClicksCreateLetter();
  EXPECT_THAT(fakes_.server.requests, SizeIs(2));
}

TEST_F(Commands, AwaitNothingOfAWorkspaceThatWasStartedAgain) {
  document_.Initialize();
  fakes_.server.on_send = [](const auto&) {
    throw platform::Failure(platform::Failure::Kind::kUnavailable, "no server");
  };
  document_.Initialize();
  EXPECT_FALSE(document_.state().AwaitsReply());
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
      &pages.tracking.OptLetter[TrackingPage::kReturnMail],
      &pages.tracking.OptLetter[TrackingPage::kResubmit],
      &pages.tracking.OptLetter[TrackingPage::kReprintBatch],
      &pages.batch.cmdBatch[BatchPage::kSearch],
      &pages.batch.OptBatchAct[0],
  };
  for (auto* control : controls) {
    EXPECT_FALSE(control->enabled());
    control->SetEnabled(true);
    EXPECT_FALSE(control->enabled());
  }
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
