#include "host/event_loop.h"

#include <gmock/gmock.h>

#include <thread>

namespace host {
namespace {

TEST(EventLoop, RunsWorkLaterInTheOrderPosted) {
  EventLoop loop;
  std::vector<int> ran;
  loop.Post([&] {
    ran.push_back(1);
    loop.Post([&] { ran.push_back(3); });
  });
  loop.Post([&] { ran.push_back(2); });
  EXPECT_THAT(ran, testing::IsEmpty());
  loop.RunPending();
  EXPECT_THAT(ran, testing::ElementsAre(1, 2, 3));
}

TEST(EventLoop, WaitsForWorkOfAnotherThreadAndRunsItOnItsOwn) {
  EventLoop loop;
  std::thread::id ran_on;
  std::jthread other([&] { loop.Post([&] { ran_on = std::this_thread::get_id(); }); });
  loop.RunUntil([&] { return ran_on != std::thread::id(); });
  EXPECT_EQ(ran_on, std::this_thread::get_id());
}

}  // namespace
}  // namespace host
