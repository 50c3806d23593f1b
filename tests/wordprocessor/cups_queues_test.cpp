#include <gmock/gmock.h>

#include <string>

#include "platform/failure.h"
#include "tests/fakes/manual_clock.h"
#include "tests/support/failing.h"
#include "tests/wordprocessor/cups_server.h"
#include "wordprocessor/printing/printers.h"

namespace wordprocessor {
namespace {

using platform::Failure;
using platform::PrintChoice;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

class ASpooler : public testing::Test {
 protected:
  ASpooler() { tests::WriteFile(pdf_, "%PDF-1.7\n%%EOF\n"); }

  std::string Print(const PrintChoice& choice) { return printers_.Print(choice, pdf_, "CTL110_2407.docx"); }
  std::string Text(const ipp_t* job, const char* name) {
    const auto* text =
        ippGetString(ippFindAttribute(const_cast<ipp_t*>(job), name, IPP_TAG_ZERO), 0, nullptr);
    return text == nullptr ? "" : text;
  }

  const tests::TemporaryFolder folder_;
  const std::filesystem::path pdf_ = folder_ / "letter.pdf";
  CupsServer server_;
  CupsQueues queues_;
  fakes::ManualClock clock_;
  Printers printers_{queues_, folder_ / "Printed letters", clock_};
};

TEST_F(ASpooler, TakesLettersUnderTheirTitlesWithCopiesSidesAndPages) {
  EXPECT_THAT(queues_.Names(), ElementsAre("held", "laser", "refusing"));
  EXPECT_EQ(Print({.printer = "laser"}), "laser, job 1");
  // A queue that is stopped keeps what it took.
  EXPECT_EQ(Print({.printer = "held", .copies = 3, .sides = PrintChoice::Sides::kBoth, .pages = "2-4,7"}),
            "held, job 2");
  const auto job = server_.Job(2);
  EXPECT_EQ(Text(job.get(), "job-name"), "CTL110_2407.docx");
  EXPECT_EQ(Text(job.get(), "sides"), "two-sided-long-edge");
  EXPECT_EQ(ippGetInteger(ippFindAttribute(job.get(), "copies", IPP_TAG_INTEGER), 0), 3);
  auto* pages = ippFindAttribute(job.get(), "page-ranges", IPP_TAG_RANGE);
  ASSERT_EQ(ippGetCount(pages), 2);
  int last = 0;
  EXPECT_EQ(ippGetRange(pages, 0, &last), 2);
  EXPECT_EQ(last, 4);
  const auto state =
      static_cast<ipp_jstate_t>(ippGetInteger(ippFindAttribute(job.get(), "job-state", IPP_TAG_ENUM), 0));
  EXPECT_EQ(state, IPP_JSTATE_PENDING);
}

TEST_F(ASpooler, RefusesWithTheQueueTheLetterAndWhatToDo) {
  EXPECT_THAT([&] { Print({.printer = "refusing"}); },
              tests::Fails(Failure::Kind::kUnavailable,
                           AllOf(HasSubstr("\"refusing\""), HasSubstr("\"CTL110_2407.docx\""),
                                 HasSubstr("is not accepting jobs"), HasSubstr("choose another one"))));
  EXPECT_THAT([&] { Print({.printer = "attic"}); },
              tests::Fails(Failure::Kind::kUnavailable, HasSubstr("\"attic\"")));
}

TEST_F(ASpooler, SaysThatAQueueHasGoneSinceTheLetterBefore) {
  EXPECT_EQ(Print({.printer = "laser"}), "laser, job 1");
  server_.Remove("laser");
  EXPECT_THAT(
      [&] { Print({.printer = "laser"}); },
      tests::Fails(Failure::Kind::kUnavailable,
                   AllOf(HasSubstr("\"laser\""), HasSubstr("the spooler has no such printer any more"))));
  EXPECT_THAT(queues_.Names(), ElementsAre("held", "refusing"));
}

}  // namespace
}  // namespace wordprocessor
