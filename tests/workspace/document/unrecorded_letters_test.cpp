#include "tests/workspace/document/workspace_test.h"

namespace workspace {
namespace {

using platform::MessageAnswer;
using platform::PrintStage;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

/// A workspace that starts where another program has ended between printer and letter history.
class UnrecordedLettersTest : public WorkspaceTest {
 protected:
  void GivenLeftBehind(const std::string& key, PrintStage stage) {
    fakes_.print_journal.left_by_others.push_back(
        {{"\"" + key + ".docx\"", key, {{"ACTION", "UPD"}, {"SEQ_NBR", "17"}}}, stage});
  }
  void UserAnswers(std::deque<MessageAnswer> answers) { fakes_.host.answers = std::move(answers); }
  std::vector<std::string> Steps() const { return fakes_.print_journal.steps; }
};

TEST_F(UnrecordedLettersTest, AreNamedAndOfferedAtTheNextStart) {
  struct Case {
    PrintStage stage;
    const char* question;
  };
  const Case cases[] = {
      {PrintStage::kHandingOver, "was on its way to the printer"},
      {PrintStage::kPrinted, "was printed but not recorded"},
      {PrintStage::kRecording, "has not confirmed its record"},
  };
  for (const auto& [stage, question] : cases) {
    fakes_.host.messages.clear();
    fakes_.print_journal.steps.clear();
    GivenLeftBehind("OLD1", stage);
    UserAnswers({MessageAnswer::kYes});
    GivenWorkspaceIsOpen();
    ASSERT_THAT(fakes_.host.messages, SizeIs(1));
    const auto& box = fakes_.host.messages.front();
    EXPECT_THAT(box.text, HasSubstr("The letter \"OLD1.docx\""));
    EXPECT_THAT(box.text, HasSubstr(question));
    EXPECT_EQ(box.default_answer, MessageAnswer::kNo);
    EXPECT_EQ(box.title, "Letters of the office");

    EXPECT_EQ(LastRequest().message_key, "OLD1");
    EXPECT_EQ(LastRequest().type, 82);
    EXPECT_THAT(LastRequest().FindRecord("CORRHIST").Assigned(), ElementsAre("ACTION=UPD", "SEQ_NBR=17"));
    fakes_.server.ReplyWithNothing();
    fakes_.RunEvents();
    EXPECT_THAT(Steps(), ElementsAre("record again OLD1", "recorded OLD1"));
    EXPECT_EQ(fakes_.status.LastText(), "Ready");
  }
}

TEST_F(UnrecordedLettersTest, AreOfferedOneAfterTheOther) {
  for (const auto* key : {"OLD1", "OLD2", "OLD3"}) GivenLeftBehind(key, PrintStage::kPrinted);
  UserAnswers({MessageAnswer::kYes, MessageAnswer::kOk, MessageAnswer::kYes, MessageAnswer::kOk,
               MessageAnswer::kYes});  // the server's refusals are boxes too
  GivenWorkspaceIsOpen();
  for (const auto* key : {"OLD1", "OLD2", "OLD3"}) {
    EXPECT_EQ(LastRequest().message_key, key);
    fakes_.server.ReplyWithError("the server refuses");  // the next one is offered all the same
    fakes_.RunEvents();
  }
  EXPECT_THAT(Steps(), ElementsAre("record again OLD1", "refused OLD1", "record again OLD2", "refused OLD2",
                                   "record again OLD3", "refused OLD3"));
}

TEST_F(UnrecordedLettersTest, StayUntilTheUserForgetsThem) {
  GivenLeftBehind("OLD1", PrintStage::kPrinted);
  GivenLeftBehind("OLD2", PrintStage::kPrinted);
  UserAnswers({MessageAnswer::kNo, MessageAnswer::kNo, MessageAnswer::kNo, MessageAnswer::kYes});
  GivenWorkspaceIsOpen();
  EXPECT_THAT(Steps(), ElementsAre("leave OLD1", "forget OLD2"));
  EXPECT_THAT(fakes_.server.requests, SizeIs(1));
}

TEST_F(UnrecordedLettersTest, OfOtherUsersAreNamedWithTheirUser) {
  GivenLeftBehind("OLD1", PrintStage::kPrinted);
  fakes_.print_journal.left_by_others.front().user = "anna";
  fakes_.print_journal.closed = {{"ben", 2}, {"root", 0}};
  UserAnswers({MessageAnswer::kNo, MessageAnswer::kNo});
  GivenWorkspaceIsOpen();
  EXPECT_THAT(fakes_.host.messages.front().text, HasSubstr("\"OLD1.docx\", printed by user \"anna\", was"));
  EXPECT_THAT(fakes_.status.texts, ::testing::Contains(HasSubstr("Letters printed by \"ben\", \"root\"")));
}

TEST_F(UnrecordedLettersTest, AreLookedForOnce) {
  GivenWorkspaceIsOpen();
  GivenLeftBehind("OLD1", PrintStage::kPrinted);
  UserChoosesCustomer("4711");
  UserPicksLetterType("110");
  GivenTemplate("TAX110.docx");
  UserClicksCreateLetter();
  ServerRepliesWithContext("<XML_CONTEXT/>");
  EXPECT_THAT(fakes_.host.messages, IsEmpty());
}

}  // namespace
}  // namespace workspace
