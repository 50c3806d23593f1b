#include "desktop/shell/qt_event_queue.h"

#include <gmock/gmock.h>

#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "tests/desktop/window_driver.h"

namespace {

using desktop::QtEventQueue;
using testing::ElementsAre;
using testing::IsEmpty;

class TheEventQueue : public testing::Test {
 protected:
  void Post(const std::string& name) {
    queue.Post([this, name] { ran.push_back(name); });
  }
  QtEventQueue queue;
  std::vector<std::string> ran;
};

TEST_F(TheEventQueue, RunsWorkLaterInOrderAlsoFromAnotherThread) {
  std::thread([this] {
    Post("a");
    Post("b");
  }).join();
  Post("c");
  EXPECT_THAT(ran, IsEmpty());

  tests::Settle();
  EXPECT_THAT(ran, ElementsAre("a", "b", "c"));
}

TEST_F(TheEventQueue, HoldsBackWhatWasPostedBeforeAndDuringAHold) {
  Post("before");
  {
    const QtEventQueue::Hold outer(queue);
    {
      const QtEventQueue::Hold inner(queue);
      Post("during");
    }
    tests::Settle();
    EXPECT_THAT(ran, IsEmpty());
  }
  EXPECT_THAT(ran, IsEmpty()) << "the end of a hold runs nothing itself";

  tests::Settle();
  EXPECT_THAT(ran, ElementsAre("before", "during"));
}

TEST_F(TheEventQueue, LetsWorkInWhileAFormIsOpenInsideAHold) {
  std::optional<QtEventQueue::Hold> hold(queue);
  Post("reply to the form");
  {
    const QtEventQueue::LetIn form(queue);
    tests::Settle();
    EXPECT_THAT(ran, ElementsAre("reply to the form"));
  }
  Post("after the form");
  tests::Settle();
  EXPECT_EQ(ran.size(), 1u);

  hold.reset();
  tests::Settle();
  EXPECT_EQ(ran.size(), 2u);
}

TEST_F(TheEventQueue, RunsTheNextWorkInsideTheLoopOfAFormThatTheFirstOpens) {
  queue.Post([this] {
    EXPECT_TRUE(tests::WaitFor([this] { return !ran.empty(); }));
    ran.push_back("form closed");
  });
  Post("reply");

  tests::Settle();

  EXPECT_THAT(ran, ElementsAre("reply", "form closed"));
}

}  // namespace
