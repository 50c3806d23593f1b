#include "workspace/messaging/reply_dispatcher.h"

#include <algorithm>
#include <optional>

#include <gmock/gmock.h>

#include "tests/fakes/fake_services.h"
#include "workspace/messaging/request_envelope.h"

namespace workspace {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Status = ReplyRoute::StatusAfterwards;

class ReplyDispatcherTest : public testing::Test {
 protected:
  void GivenRoute(ReplyRoute route) { routes_.push_back(std::move(route)); }
  void GivenRequestUnderWay(std::optional<std::string> name) {
    envelope_.Send({.type = 79, .name = std::move(name)});
    fakes_.journal.Clear();
  }
  void RepliesArrive() {
    ReplyDispatcher dispatcher(fakes_.services(), pending_, message_title_, routes_,
                               [this] { fakes_.journal.Add("frame on"); });
    const auto ready =
        listener_->DataReady.Connect([&](const std::string& name) { dispatcher.DataReady(name); });
    const auto timeout = listener_->MsgTimeout.Connect([&] { dispatcher.MsgTimeout(); });
    fakes_.RunEvents();
  }
  std::function<void()> Notes(std::string line) {
    return [this, line] { fakes_.journal.Add(line); };
  }
  ReplyRoute::Action Handles(std::string line) {
    return [this, line](const Reply&) { fakes_.journal.Add(line); };
  }
  int TimesNoted(const std::string& line) {
    return static_cast<int>(std::ranges::count(fakes_.journal.lines(), line));
  }

  fakes::FakeServices fakes_;
  const std::string message_title_ = "Letters";
  PendingRequest pending_;
  std::unique_ptr<platform::ReplyListener> listener_ = fakes_.server.NewListener();
  RequestEnvelope envelope_{fakes_.services(), pending_, *listener_};
  std::vector<ReplyRoute> routes_;
};

TEST_F(ReplyDispatcherTest, WalksTheStepsOfTheRouteInOrder) {
  GivenRoute({"Letter_Preview", Handles("merge"), Status::kReady, Notes("error"), Notes("always")});
  GivenRoute({"letter_preview", Handles("wrong case"), Status::kReady, {}, {}});
  GivenRequestUnderWay("Letter_Preview");
  fakes_.server.ReplyWithNothing();
  RepliesArrive();

  EXPECT_THAT(fakes_.journal.lines(), ElementsAre("pointer hourglass", "ready", "merge", "status Ready",
                                                  "always", "pointer normal", "frame on"));
  EXPECT_THAT(fakes_.server.error_askers, ElementsAre("ZEMLO_Corresp.mVemtMessage_DataReady"));
}

TEST_F(ReplyDispatcherTest, ShowsAnErrorReplyInsteadOfHandlingIt) {
  GivenRoute({"XMLRequest", Handles("create"), Status::kReady, Notes("enable"), Notes("always")});
  GivenRequestUnderWay("XMLRequest");
  fakes_.server.ReplyWithError("Unknown customer.");
  RepliesArrive();

  EXPECT_THAT(fakes_.journal.lines(), ElementsAre("pointer hourglass", "ready", "message Unknown customer.",
                                                  "status Search was not successful", "enable", "always",
                                                  "pointer normal", "frame on"));
  EXPECT_EQ(fakes_.host.messages[0].icon, platform::MessageIcon::kCritical);
  EXPECT_EQ(fakes_.host.messages[0].title, "Letters");
}

TEST_F(ReplyDispatcherTest, TellsATimeOutFromAnotherErrorUntilTheNextRequest) {
  GivenRequestUnderWay("XMLRequest");
  fakes_.server.TimesOut();
  RepliesArrive();
  EXPECT_EQ(fakes_.status.LastText(), "Search timed out");

  GivenRequestUnderWay("XMLRequest");
  fakes_.server.ReplyWithError("Unknown customer.");
  RepliesArrive();
  EXPECT_EQ(fakes_.status.LastText(), "Search was not successful");
}

// "Search was not successful" used to stand there for a time-out: what was sent under the box had cleared the
// flag.
TEST_F(ReplyDispatcherTest, TellsATimeOutAlsoWhereAnotherRequestGoesOutUnderItsBox) {
  fakes_.host.user_at_message = [this](const auto&) { envelope_.Send({.type = 82, .name = "LetterAU"}); };
  GivenRequestUnderWay("Letter_History");
  fakes_.server.TimesOut();
  RepliesArrive();
  EXPECT_EQ(fakes_.status.LastText(), "Search timed out");
}

TEST_F(ReplyDispatcherTest, IgnoresTheReplyForAnotherApplication) {
  GivenRoute({"XMLRequest", Handles("create"), Status::kReady, {}, Notes("always")});
  GivenRequestUnderWay("XMLRequest");
  const auto key = pending_.message_key();
  fakes_.server.ReplyForApplication("ZEMLO_CorrespfrmBatchStat");
  RepliesArrive();

  EXPECT_THAT(fakes_.journal.lines(), ElementsAre("pointer normal", "frame on"));
  EXPECT_THAT(fakes_.errors.reports, IsEmpty());
  EXPECT_EQ(pending_.name(), "XMLRequest");
  EXPECT_EQ(pending_.message_key(), key);
}

// A reply that came while a newer request was pending used to be handled as the newer one's, without its
// rows.
TEST_F(ReplyDispatcherTest, IgnoresTheReplyToARequestThatANewerOneHasReplaced) {
  GivenRoute({"Older", Handles("older"), Status::kReady, {}, {}});
  GivenRoute({"Newer", Handles("newer"), Status::kReady, {}, {}});
  for (const bool older_comes_first : {true, false}) {
    GivenRequestUnderWay("Older");
    const auto older = fakes_.server.LastRequest().message_key;
    GivenRequestUnderWay("Newer");
    const auto newer = fakes_.server.LastRequest().message_key;
    for (const auto& key : {older_comes_first ? older : newer, older_comes_first ? newer : older}) {
      fakes_.server.Reply({}, key);
      RepliesArrive();
      EXPECT_EQ(fakes_.host.pointer,
                pending_.IsAwaited() ? platform::MousePointer::kHourglass : platform::MousePointer::kNormal);
    }
    EXPECT_EQ(TimesNoted("newer"), 1) << older_comes_first;
    EXPECT_EQ(TimesNoted("older"), 0) << older_comes_first;
    EXPECT_FALSE(pending_.IsAwaited());
  }
}

TEST_F(ReplyDispatcherTest, AwaitsNothingAfterAReplyOfAnyKindButWhatItsHandlerHasSent) {
  GivenRoute({"First",
              [this](const Reply&) { envelope_.Send({.type = 82, .name = "Second"}); },
              Status::kReady,
              {},
              {}});
  GivenRequestUnderWay("First");
  fakes_.server.ReplyWithNothing();
  RepliesArrive();
  EXPECT_TRUE(pending_.IsAwaited());
  EXPECT_EQ(fakes_.host.pointer, platform::MousePointer::kHourglass);

  for (const bool times_out : {true, false}) {
    GivenRequestUnderWay("Second");
    times_out ? fakes_.server.TimesOut() : fakes_.server.ReplyWithError("Unknown customer.");
    RepliesArrive();
    EXPECT_FALSE(pending_.IsAwaited());
    EXPECT_EQ(fakes_.host.pointer, platform::MousePointer::kNormal);
  }
}

TEST_F(ReplyDispatcherTest, RunsNoHandlerForAReplyThatNobodyWaitsFor) {
  GivenRoute({"Letter_Preview", Handles("merge"), Status::kSetByAction, {}, {}});
  GivenRequestUnderWay("Letter_Preview");
  GivenRequestUnderWay(std::nullopt);
  fakes_.server.ReplyWithNothing();
  RepliesArrive();
  EXPECT_THAT(fakes_.journal.lines(),
              ElementsAre("pointer hourglass", "ready", "status Ready", "pointer normal", "frame on"));
}

TEST_F(ReplyDispatcherTest, ReportsAHandlerThatFailsAndStillComesToItsEnd) {
  GivenRoute(
      {"Letter_History",
       [](const Reply&) { throw platform::Failure(platform::Failure::Kind::kNotFound, "no such column"); },
       Status::kReady,
       {},
       Notes("always")});
  GivenRequestUnderWay("Letter_History");
  fakes_.server.ReplyWithNothing();
  RepliesArrive();

  EXPECT_THAT(fakes_.errors.Procedures(), ElementsAre("ZEMLO_Corresp.mVEMTMessage_DataReady"));
  EXPECT_THAT(fakes_.journal.lines(),
              ElementsAre("pointer hourglass", "ready", "always", "pointer normal", "frame on"));
}

TEST_F(ReplyDispatcherTest, KeepsToTheRouteOfTheReplyWhenItsHandlerSendsTheNextRequest) {
  GivenRoute({"First",
              [this](const Reply&) { envelope_.Send({.type = 82, .name = "Second"}); },
              Status::kSetByAction,
              {},
              Notes("first ends")});
  GivenRoute({"Second", {}, Status::kSetByAction, {}, Notes("second ends")});
  GivenRequestUnderWay("First");
  fakes_.server.ReplyWithNothing();
  RepliesArrive();
  EXPECT_THAT(fakes_.journal.lines(), testing::Contains("first ends"));
  EXPECT_THAT(fakes_.journal.lines(), testing::Not(testing::Contains("second ends")));
}

}  // namespace
}  // namespace workspace
