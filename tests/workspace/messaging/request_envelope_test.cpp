#include "workspace/messaging/request_envelope.h"

#include <chrono>

#include <gmock/gmock.h>

#include "tests/fakes/fake_services.h"

namespace workspace {
namespace {

using std::chrono::milliseconds;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class RequestEnvelopeTest : public testing::Test {
 protected:
  fakes::FakeServices fakes_;
  PendingRequest pending_;
  std::unique_ptr<platform::ReplyListener> listener_ = fakes_.server.NewListener();
  RequestEnvelope envelope_{fakes_.services(), pending_, *listener_};
};

TEST_F(RequestEnvelopeTest, SendsWhatTheDescriptionSaysAndNothingElse) {
  pending_.TimedOut();
  RequestDescription request{.type = 82, .name = "LetterAU"};
  request.keys = {platform::Criterion("key:FetchContext", "17"),
                  {"CUSTOMER", "key: Cols", "between", "1 and 2"}};
  request.records = {{"CORRHIST", {{{"action", "ADD"}, {"FORM_NBR", platform::Value::Null()}}}}};
  envelope_.Send(request);

  const auto& sent = fakes_.server.LastRequest();
  EXPECT_EQ(sent.application, "ZEMLO_Corresp");
  EXPECT_EQ(sent.version, "1.0");
  EXPECT_EQ(sent.type, 82);
  EXPECT_EQ(sent.user_id, "OFFICER1");
  EXPECT_THAT(sent.Keys(),
              ElementsAre("KORVADSK|key:FetchContext|=|17", "CUSTOMER|key: Cols|between|1 and 2"));
  EXPECT_THAT(sent.FindRecord("CORRHIST").Assigned(), ElementsAre("ACTION=ADD"));
  EXPECT_EQ(sent.inquiry_xml, "");
  EXPECT_TRUE(sent.was_built);
  EXPECT_EQ(pending_.name(), "LetterAU");
  EXPECT_EQ(pending_.message_key(), sent.message_key);
  EXPECT_FALSE(pending_.timed_out());
}

TEST_F(RequestEnvelopeTest, LeavesOutTheUserWhereTheRequestHasNone) {
  envelope_.Send({.type = 83, .name = "GetNetworkPath", .with_user_id = false, .inquiry_xml = "<A/>"});
  EXPECT_EQ(fakes_.server.LastRequest().user_id, "");
  EXPECT_EQ(fakes_.server.LastRequest().inquiry_xml, "<A/>");
  EXPECT_THAT(fakes_.server.LastRequest().keys, IsEmpty());
}

TEST_F(RequestEnvelopeTest, AnnouncesBeforeOrAfterSendingAsDescribed) {
  fakes_.journal.Clear();
  envelope_.Send({.type = 83, .name = "XMLRequest", .status = "Requesting", .waits_for_context = true});
  EXPECT_THAT(fakes_.journal.lines(),
              ElementsAre("send type 83", "not ready", "pointer hourglass", "status Requesting"));

  fakes_.journal.Clear();
  envelope_.Send({.type = 79,
                  .name = "Letter_History",
                  .status = "Searching",
                  .status_when = RequestDescription::Status::kBeforeSending,
                  .mode = RequestDescription::SendMode::kSendAndWait});
  EXPECT_THAT(fakes_.journal.lines(), ElementsAre("pointer hourglass", "status Searching", "send type 79"));
  EXPECT_EQ(fakes_.server.LastRequest().time_out, milliseconds(180'000));

  fakes_.journal.Clear();
  envelope_.Send({.type = 7, .status = "Unseen", .in_background = true});
  EXPECT_THAT(fakes_.journal.lines(), ElementsAre("send type 7"));
}

TEST_F(RequestEnvelopeTest, AwaitsItsReplyUnlessItCouldNotBeSent) {
  envelope_.Send({.type = 83, .name = "XMLRequest", .status = "Requesting"});
  EXPECT_TRUE(pending_.IsAwaited());
  EXPECT_EQ(pending_.message_key(), fakes_.server.LastRequest().message_key);
  EXPECT_EQ(pending_.status(), "Requesting");
  EXPECT_EQ(fakes_.host.pointer, platform::MousePointer::kHourglass);

  fakes_.server.on_send = [](const auto&) {
    throw platform::Failure(platform::Failure::Kind::kUnavailable, "no server");
  };
  EXPECT_THROW(envelope_.Send({.type = 79,
                               .name = "Letter_History",
                               .waits_for_context = true,
                               .status_when = RequestDescription::Status::kBeforeSending}),
               platform::Failure);
  EXPECT_FALSE(pending_.IsAwaited());
  EXPECT_EQ(fakes_.host.pointer, platform::MousePointer::kNormal);
  EXPECT_TRUE(fakes_.status.ready);
}

TEST_F(RequestEnvelopeTest, SpeaksForADialogUnderItsOwnNameAndLeavesTheWorkspacesRequest) {
  envelope_.Send({.type = 79, .name = "Letter_History"});
  pending_.TimedOut();
  const auto key = pending_.message_key();

  PendingRequest dialogs;
  RequestEnvelope envelope(fakes_.services(), dialogs, *listener_, "ZEMLO_CorrespfrmBatchStat");
  envelope.Send({.type = 79, .name = "Batch_Stat"});
  EXPECT_EQ(fakes_.server.LastRequest().application, "ZEMLO_CorrespfrmBatchStat");
  EXPECT_TRUE(dialogs.IsAwaited());
  EXPECT_FALSE(dialogs.timed_out());
  EXPECT_TRUE(pending_.IsAwaited());
  EXPECT_EQ(pending_.message_key(), key);
  EXPECT_TRUE(pending_.timed_out());
}

}  // namespace
}  // namespace workspace
