#include <gmock/gmock.h>

#include <sstream>

#include "host/windowless_preview.h"
#include "host/windowless_shell.h"
#include "platform/controls/form.h"

namespace host {
namespace {

using platform::MessageAnswer;
using platform::MessageButtons;
using platform::MessageIcon;

TEST(WindowlessShell, OnlyAnExclamationOrACriticalBoxRefusesTheCommand) {
  EventLoop loop;
  std::ostringstream messages;
  WindowlessShell shell(loop, {messages, messages}, {});
  shell.ShowMessage({"For your information.", MessageIcon::kInformation, "t"});
  EXPECT_FALSE(shell.refused());
  shell.ShowMessage({"first\r\nsecond\r\n", MessageIcon::kExclamation, "t"});
  EXPECT_TRUE(shell.refused());
  EXPECT_EQ(messages.str(), "For your information.\nfirst\nsecond\n");
}

TEST(WindowlessShell, TellsWhatRefusesApartFromWhatDoesNot) {
  EventLoop loop;
  std::ostringstream reasons;
  std::ostringstream notices;
  WindowlessShell::Answers yes;
  yes.yes = true;
  WindowlessShell shell(loop, {reasons, notices}, yes);
  shell.ShowMessage({"another letter's file", MessageIcon::kExclamation, "t"});
  shell.ShowReason("at the start");
  shell.AskingBegins();
  EXPECT_FALSE(shell.refused());
  shell.ShowMessage({"information", MessageIcon::kInformation, "t"});
  shell.ShowMessage({"Sure?", MessageIcon::kQuestion, "t", MessageButtons::kYesNo, MessageAnswer::kNo});
  EXPECT_EQ(reasons.str(), "");
  EXPECT_EQ(notices.str(), "another letter's file\nat the start\ninformation\nSure?\n");
  shell.ShowReason("because");
  shell.ShowMessage({"refused", MessageIcon::kExclamation, "t"});
  EXPECT_EQ(reasons.str(), "because\nrefused\n");
}

TEST(WindowlessShell, AQuestionTakesItsDefaultUnlessTheUserSaidYesBeforehand) {
  EventLoop loop;
  std::ostringstream messages;
  const platform::Message question{"Sure?", MessageIcon::kQuestion, "t", MessageButtons::kYesNo,
                                   MessageAnswer::kNo};
  EXPECT_EQ(WindowlessShell(loop, {messages, messages}, {}).ShowMessage(question), MessageAnswer::kNo);
  WindowlessShell::Answers yes;
  yes.yes = true;
  EXPECT_EQ(WindowlessShell(loop, {messages, messages}, yes).ShowMessage(question), MessageAnswer::kYes);
}

TEST(WindowlessShell, ALetterWithPlaceholdersGoesOutOnlyWhereTheUserSaidThatBeforehand) {
  EventLoop loop;
  std::ostringstream messages;
  platform::Message question{"Go out?", MessageIcon::kQuestion, "t", MessageButtons::kYesNo,
                             MessageAnswer::kNo};
  question.topic = platform::MessageTopic::kUnfilledLetter;
  WindowlessShell::Answers answers;
  answers.yes = true;
  WindowlessShell yes_to_all(loop, {messages, messages}, answers);
  EXPECT_EQ(yes_to_all.ShowMessage(question), MessageAnswer::kNo);
  EXPECT_TRUE(yes_to_all.refused());
  EXPECT_EQ(messages.str(), "Go out?\n");

  answers.allow_unfilled = true;
  WindowlessShell allowed(loop, {messages, messages}, answers);
  EXPECT_EQ(allowed.ShowMessage(question), MessageAnswer::kYes);
  EXPECT_FALSE(allowed.refused());
}

TEST(WindowlessShell, AFormNobodyAnswersIsCancelled) {
  EventLoop loop;
  std::ostringstream messages;
  WindowlessShell shell(loop, {messages, messages}, {});
  platform::Form form("Letter Bookmark");
  shell.ShowModal(form);
  EXPECT_FALSE(form.shown());

  struct Refusing : platform::Form {
    using Form::Form;
    bool OnQueryUnload() override { return false; }
  } refusing("Select Customer");
  shell.ShowModal(refusing);
  EXPECT_FALSE(refusing.shown());

  platform::Form known("Known");
  shell.AnswerFormsWith([&](platform::Form& asked) {
    if (&asked != &known) return false;
    loop.Post([&] { known.Close(); });
    return true;
  });
  shell.ShowModal(known);
  EXPECT_FALSE(known.shown());
}

TEST(WindowlessPreview, PrintsThenClosesFromTheEventLoop) {
  EventLoop loop;
  WindowlessPreview preview(loop, WindowlessPreview::Wish::kPrint);
  std::vector<std::string> seen;
  auto window = preview.Open({"letter.pdf", "Letter", [&] { seen.push_back("print"); },
                              [&] { seen.push_back("save"); }, [&] { seen.push_back("closed"); }});
  EXPECT_THAT(seen, testing::IsEmpty());
  loop.RunPending();
  EXPECT_THAT(seen, testing::ElementsAre("print", "closed"));
}

TEST(WindowlessPreview, AWindowDroppedWhilePrintingIsNotReadFurther) {
  EventLoop loop;
  WindowlessPreview preview(loop, WindowlessPreview::Wish::kPrint);
  std::unique_ptr<platform::PreviewWindow> window;
  bool closed = false;
  window = preview.Open({"letter.pdf", "Letter", [&] { window.reset(); }, [] {}, [&] { closed = true; }});
  loop.RunPending();
  EXPECT_FALSE(closed);
  EXPECT_FALSE(preview.is_open());
}

}  // namespace
}  // namespace host
