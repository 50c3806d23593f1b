#include "platform/event.h"

#include <gmock/gmock.h>

#include <optional>
#include <string>
#include <vector>

namespace platform {
namespace {

using testing::ElementsAre;

class AnEvent : public testing::Test {
 protected:
  /// An observer that writes its name down.
  std::function<void()> Observer(std::string name) {
    return [this, name] { told_.push_back(name); };
  }

  std::vector<std::string> told_;
  std::optional<Event<>> event_{std::in_place};
};

TEST_F(AnEvent, TellsItsObserversInTheOrderTheyConnected) {
  const auto a = event_->Connect(Observer("a"));
  const auto b = event_->Connect(Observer("b"));
  (*event_)();
  EXPECT_THAT(told_, ElementsAre("a", "b"));
}

TEST_F(AnEvent, TellsNobodyWhoseConnectionIsGone) {
  auto moved = event_->Connect(Observer("moved"));
  auto kept = event_->Connect(Observer("kept"));
  moved = std::move(kept);
  { const auto gone = event_->Connect(Observer("gone")); }
  (*event_)();
  EXPECT_THAT(told_, ElementsAre("kept"));
}

TEST_F(AnEvent, LetsAnObserverDisconnectItselfAndOthersWhileItTells) {
  Connection first, second, third;
  first = event_->Connect([&] {
    told_.push_back("first");
    first.Disconnect();
    second.Disconnect();
  });
  second = event_->Connect(Observer("second"));
  third = event_->Connect(Observer("third"));
  (*event_)();
  (*event_)();
  EXPECT_THAT(told_, ElementsAre("first", "third", "third"));
}

TEST_F(AnEvent, TellsAnObserverConnectedWhileItTellsFromTheNextTimeOn) {
  std::vector<Connection> late;
  const auto early = event_->Connect([&] {
    told_.push_back("early");
    if (late.empty()) late.push_back(event_->Connect(Observer("late")));
  });
  (*event_)();
  EXPECT_THAT(told_, ElementsAre("early"));
  (*event_)();
  EXPECT_THAT(told_, ElementsAre("early", "early", "late"));
}

TEST_F(AnEvent, MayBeFiredAgainByAnObserver) {
  bool again = true;
  const auto a = event_->Connect([&] {
    told_.push_back("a");
    if (std::exchange(again, false)) (*event_)();
  });
  const auto b = event_->Connect(Observer("b"));
  (*event_)();
  EXPECT_THAT(told_, ElementsAre("a", "a", "b", "b"));
}

TEST_F(AnEvent, MayBeDestroyedByAnObserverAndStillTellsTheOthers) {
  const auto a = event_->Connect([&] { event_.reset(); });
  auto b = event_->Connect(Observer("b"));
  (*event_)();
  EXPECT_THAT(told_, ElementsAre("b"));
  b.Disconnect();  // of an event that is gone
}

TEST(AnEventWithArguments, GivesEveryObserverTheSame) {
  Event<std::string, int> event;
  std::string heard;
  const auto observe = [&heard](std::string text, int number) {
    heard += std::move(text) + std::to_string(number);
  };
  const auto a = event.Connect(observe);
  const auto b = event.Connect(observe);
  event("row", 7);
  EXPECT_EQ(heard, "row7row7");
}

}  // namespace
}  // namespace platform
