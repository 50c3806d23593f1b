#include "platform/failure.h"

#include <gmock/gmock.h>

#include <limits>
#include <stdexcept>

#include "platform/counter.h"
#include "platform/parties/trap.h"
#include "tests/fakes/recording_errors.h"
#include "tests/support/failing.h"

namespace platform {
namespace {

TEST(AFailure, GathersWhatWasBeingDoneOnItsWayUp) {
  const auto open = [] { throw Failure(Failure::Kind::kDamaged, "not a zip file"); };
  EXPECT_THAT([&] { While("printing letter 110", [&] { While("opening template CTL110.docx", open); }); },
              tests::Fails(Failure::Kind::kDamaged,
                           "not a zip file, while opening template CTL110.docx, while printing letter 110"));
}

TEST(AFailure, LeavesTheResultOfGoodWorkAlone) {
  int number = 4;
  int& same = While("counting", [&]() -> int& { return number; });
  EXPECT_EQ(&same, &number);
}

TEST(ATrap, ReportsEveryFailureUnderItsProcedure) {
  fakes::RecordingErrors errors;
  EXPECT_FALSE(Trap(errors, "ZEMLO_Corresp.PrintDoc",
                    [] { throw Failure(Failure::Kind::kUnavailable, "no printer"); }));
  EXPECT_FALSE(Trap(errors, "ZEMLO_Corresp.SaveDoc", [] { throw std::out_of_range("row 7"); }));
  ASSERT_EQ(errors.reports.size(), 2U);
  EXPECT_EQ(errors.reports[0].description, "no printer");
  EXPECT_EQ(errors.reports[0].component_title, kComponentTitle);
  EXPECT_EQ(errors.reports[0].procedure, "ZEMLO_Corresp.PrintDoc");
  EXPECT_EQ(errors.reports[1].description, "row 7");
}

TEST(ATrap, SwallowsTheTwoSignalsWithoutAReport) {
  fakes::RecordingErrors errors;
  EXPECT_FALSE(Trap(errors, "ZEMLO_Corresp.Step", [] { throw AbandonStep(); }));
  EXPECT_FALSE(Trap(errors, "ZEMLO_Corresp.Save", [] { throw CancelSave(); }));
  EXPECT_TRUE(Trap(errors, "ZEMLO_Corresp.Good", [] {}));
  EXPECT_TRUE(errors.reports.empty());
}

TEST(ACounter, StaysAtItsLargestValueAndSaysSo) {
  Counter counter(std::numeric_limits<std::int16_t>::max() - 1);
  EXPECT_TRUE(counter.Increment());
  EXPECT_FALSE(counter.Increment());
  EXPECT_EQ(counter.value(), std::numeric_limits<std::int16_t>::max());
}

}  // namespace
}  // namespace platform
