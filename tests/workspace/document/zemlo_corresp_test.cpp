#include "workspace/document/zemlo_corresp.h"

#include "tests/workspace/document/workspace_test.h"

namespace workspace {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ZemloCorrespTest : public WorkspaceTest {};

TEST_F(ZemloCorrespTest, NeverHasAnythingToSave) {
  EXPECT_FALSE(document_.DataChanged());
  EXPECT_FALSE(document_.NeedSave());
  fakes_.journal.Clear();
  document_.SaveData();
  EXPECT_THAT(fakes_.journal.lines(),
              ElementsAre("status Checking for data changes",
                          "status Information did not change.  Save request canceled", "pointer normal"));
  EXPECT_THAT(fakes_.errors.reports, IsEmpty());
  EXPECT_THAT(fakes_.host.messages, IsEmpty());
}

TEST_F(ZemloCorrespTest, ClosesWithOrWithoutItsFile) {
  GivenWorkspaceIsOpen();
  for (const bool present : {true, false}) {
    if (present) fakes_.files.content["config/ZEMLO_Corresp.xml"] = "x";
    fakes_.status.button_calls.clear();
    EXPECT_TRUE(document_.CloseDocument());
    EXPECT_FALSE(fakes_.files.content.contains("config/ZEMLO_Corresp.xml"));
    EXPECT_THAT(fakes_.status.button_calls, ElementsAre(7, 8, 9, 14, 12));
    EXPECT_TRUE(fakes_.status.buttons.at(12));
    EXPECT_EQ(fakes_.status.host_tag, "HOST-7");
  }
}

TEST_F(ZemloCorrespTest, GivesTheButtonsBackEvenWhereItsFileStays) {
  GivenWorkspaceIsOpen();
  fakes_.files.broken["config/ZEMLO_Corresp.xml"] = platform::Failure::Kind::kPermissionDenied;
  EXPECT_TRUE(document_.CloseDocument());
  EXPECT_THAT(fakes_.errors.Procedures(), ElementsAre("ZEMLO_IssueMC.CloseDocument"));
  EXPECT_TRUE(fakes_.status.buttons.at(7));
}

TEST_F(ZemloCorrespTest, ReportsBeingUsedBeforeItsStart) {
  document_.CheckEdit(kPage);
  document_.SelectNewType();
  EXPECT_THAT(fakes_.errors.Procedures(),
              ElementsAre("ZEMLO_Corresp.CheckEdit", "ZEMLO_Corresp.SelectNewType"));
  EXPECT_THAT(document_.CheckMessages(kPage), IsEmpty());
}

TEST_F(ZemloCorrespTest, HearsNoReplyAfterItsEnd) {
  GivenWorkspaceIsOpen();
  GivenTemplate("TAX110.docx");
  UserChoosesCustomer("4711");
  UserPicksLetterType("110");
  UserClicksCreateLetter();
  document_.Terminate();
  ServerRepliesWithContext("<XML_CONTEXT/>");
  EXPECT_THAT(print_.calls, IsEmpty());
}

}  // namespace
}  // namespace workspace
