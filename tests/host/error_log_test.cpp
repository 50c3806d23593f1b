#include "host/error_log.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <vector>

#include "host/system_clock.h"
#include "tests/fakes/manual_clock.h"
#include "tests/support/temporary_folder.h"

namespace host {
namespace {

TEST(ErrorLog, WritesOneLineAReportAndTellsThePerson) {
  const tests::TemporaryFolder folder;
  const SystemClock clock;
  std::string told;
  ErrorLog log(folder / "error.log", clock,
               [&](const auto& description, const auto&) { told = description; });
  log.ReportError("two\r\nlines", "Correspondence", "ZEMLO_Corresp.PrintDoc");
  log.ReportError("again", "Correspondence", "ZEMLO_Corresp.PrintDoc");
  const auto text = tests::ReadFile(folder / "error.log");
  EXPECT_EQ(std::ranges::count(text, '\n'), 2);
  EXPECT_THAT(text, testing::HasSubstr("\tCorrespondence\tZEMLO_Corresp.PrintDoc\ttwo\\r\\nlines\n"));
  EXPECT_EQ(told, "again");
}

// Without the reference database each key that was typed was reported three times.
TEST(ErrorLog, AFaultThatManyProceduresMeetIsOneLine) {
  const tests::TemporaryFolder folder;
  fakes::ManualClock clock;
  int told = 0;
  ErrorLog log(folder / "error.log", clock, [&](const auto&, const auto&) { ++told; });
  const auto lines = [&] { return std::ranges::count(tests::ReadFile(folder / "error.log"), '\n'); };
  for (const auto* procedure : {"ZEMLO_Corresp.A", "ZEMLO_Corresp.B", "ZEMLO_Corresp.C"})
    log.ReportError("the disk is gone", "Correspondence", procedure);
  EXPECT_EQ(lines(), 1);
  EXPECT_EQ(told, 3);
  log.ReportError("another", "Correspondence", "ZEMLO_Corresp.A");
  log.ReportError("the disk is gone", "Correspondence", "ZEMLO_Corresp.A");
  clock.Sleep(std::chrono::seconds(2));
  log.ReportError("the disk is gone", "Correspondence", "ZEMLO_Corresp.A");
  EXPECT_EQ(lines(), 4);
}

TEST(ErrorLog, ALogThatCannotBeWrittenStopsNothingAndIsSaidOnce) {
  const SystemClock clock;
  std::vector<std::string> told;
  ErrorLog log("/nonexistent/error.log", clock,
               [&](const auto& description, const auto&) { told.push_back(description); });
  log.ReportError("lost", "Correspondence", "x");
  log.ReportError("lost too", "Correspondence", "x");
  EXPECT_THAT(told, testing::ElementsAre("lost", testing::HasSubstr("(the error log) could not be written"),
                                         "lost too"));
}

TEST(ErrorLog, ADiskThatIsFullIsCalledFull) {
  const SystemClock clock;
  std::string told;
  ErrorLog("/dev/full", clock, [&](const auto& description, const auto&) {
    told += description;
  }).ReportError("lost", "Correspondence", "x");
  EXPECT_THAT(told, testing::HasSubstr("the disk is full"));
}

}  // namespace
}  // namespace host
