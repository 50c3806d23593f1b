#include "workspace/messaging/pending_request.h"

#include <gmock/gmock.h>

#include "tests/fakes/fake_services.h"
#include "workspace/messaging/request_envelope.h"

namespace workspace {
namespace {

class APendingRequest : public testing::Test {
 protected:
  void ReplyComes() {
    fakes_.server.ReplyWith("CORRHIST", {{{"SEQ_NBR", 7}}});
    fakes_.RunEvents();
  }
  std::optional<Reply> Taken() { return pending_.TakeReply(fakes_.server); }

  fakes::FakeServices fakes_;
  PendingRequest pending_;
  std::unique_ptr<platform::ReplyListener> listener_ = fakes_.server.NewListener();
  RequestEnvelope envelope_{fakes_.services(), pending_, *listener_};
};

TEST_F(APendingRequest, GivesItsReplyOnceAndIsOver) {
  EXPECT_FALSE(Taken());
  envelope_.Send({.type = 79, .name = "Letter_History"});
  EXPECT_FALSE(Taken()) << "it has not come";
  ReplyComes();
  const auto reply = Taken();
  ASSERT_TRUE(reply);
  EXPECT_EQ(reply->request_name, "Letter_History");
  EXPECT_EQ(RowsOf(fakes_.services(), *reply, "CORRHIST")->Text("SEQ_NBR"), "7");
  EXPECT_EQ(RowsOf(fakes_.services(), *reply, "CUSTOMER"), nullptr);
  EXPECT_FALSE(pending_.IsAwaited());
  EXPECT_EQ(pending_.name() + pending_.message_key() + pending_.status(), "");
  EXPECT_FALSE(Taken());
}

TEST_F(APendingRequest, HandsBackTheLetterItIsAbout) {
  envelope_.Send({.type = 83, .name = "Letter_Preview", .letter = {.sequence_number = 17}});
  envelope_.Send({.type = 83, .name = "Letter_Preview", .letter = {.sequence_number = 18}});
  ReplyComes();
  EXPECT_EQ(Taken()->letter.sequence_number, 18);
  envelope_.Send({.type = 79, .name = "Letter_History"});
  ReplyComes();
  EXPECT_EQ(Taken()->letter.sequence_number, 0) << "a search is about none";
}

TEST_F(APendingRequest, KeepsItsNameForANextOneWhoseReplyNobodyHandles) {
  envelope_.Send({.type = 83, .name = "Letter_Preview"});
  envelope_.Send({.type = 82});
  EXPECT_EQ(pending_.name(), "Letter_Preview");
  EXPECT_EQ(pending_.message_key(), fakes_.server.LastRequest().message_key);
  ReplyComes();
  EXPECT_EQ(Taken()->request_name, "");
}

TEST_F(APendingRequest, IsAwaitedOnlyOnceItHasBegun) {
  EXPECT_THROW(pending_.Await("Searching"), platform::Failure);
  pending_.Begin("MSG1", "Letter_History", {});
  EXPECT_FALSE(pending_.IsAwaited());
  pending_.Await("Searching");
  EXPECT_TRUE(pending_.IsAwaited());
  EXPECT_THROW(pending_.Await("Searching"), platform::Failure);
  pending_.Forget();
  EXPECT_FALSE(pending_.IsAwaited());
}

TEST_F(APendingRequest, TellsWithItsReplyWhetherItHasTimedOut) {
  for (const bool times_out : {true, false}) {
    envelope_.Send({.type = 79, .name = "Letter_History"});
    if (times_out) pending_.TimedOut();
    ReplyComes();
    EXPECT_EQ(Taken()->timed_out, times_out);
  }
}

}  // namespace
}  // namespace workspace
