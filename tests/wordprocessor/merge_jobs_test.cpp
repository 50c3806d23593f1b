#include "wordprocessor/printing/merge_jobs.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>

#include <map>
#include <string>

#include "platform/whole_file.h"
#include "tests/wordprocessor/layout_letter.h"
#include "wordprocessor/printing/merge_clashes.h"

namespace wordprocessor {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

TEST(MergeJobs, ReadsOneJobALineAndNamesBadLinesByNumber) {
  const auto list = ReadMergeJobs(
      "\xEF\xBB\xBFt one.docx\tc.xml\to.pdf\r\n"
      " \t\r\n"
      "t.docx\tc.xml\n"
      "t.docx\t\to.pdf\n"
      "t.docx\tc.xml\to.pdf\tmore\n"
      "# the letters\tof\tMonday\n"
      "  # and of Tuesday\n"
      "t.docx\tc.xml\tlast.docx");
  ASSERT_EQ(list.jobs.size(), 2U);
  EXPECT_EQ(list.jobs[0].template_file, "t one.docx");
  EXPECT_EQ(list.jobs[0].output, "o.pdf");
  EXPECT_EQ(list.jobs[1].number, 8);
  std::string bad;
  for (const auto& line : list.bad_lines) bad += line.failure.value().description() + "\n";
  EXPECT_THAT(bad, AllOf(HasSubstr("Line 3 is no job."), HasSubstr("Line 4 is no job."),
                         HasSubstr("Line 5 is no job.")));
}

class MergeJobsTest : public testing::Test {
 protected:
  MergeJobsTest() {
    platform::WriteScratchFile(
        folder_ / "t.docx",
        Letter("<w:p><w:bookmarkStart w:id=\"1\" w:name=\"NAME\"/><w:r><w:t>blank</w:t></w:r>"
               "<w:bookmarkEnd w:id=\"1\"/></w:p><w:p><w:bookmarkStart w:id=\"2\" w:name=\"PHONE\"/>"
               "<w:r><w:t>none</w:t></w:r><w:bookmarkEnd w:id=\"2\"/></w:p>"));
    platform::WriteScratchFile(folder_ / "bad.xml", "<XML_CONTEXT>");
  }
  MergeJob Job(int number, const std::string& template_file, const std::string& context,
               const std::string& output) {
    return {number, folder_ / template_file, folder_ / context, folder_ / output};
  }
  std::string ContextOf(int number) {
    const auto name = std::to_string(number) + ".xml";
    platform::WriteScratchFile(
        folder_ / name, "<XML_CONTEXT><NAME>Customer " + std::to_string(number) + "</NAME></XML_CONTEXT>");
    return name;
  }
  std::map<int, MergeResult> Run(const std::vector<MergeJob>& jobs, const std::string& program, int workers,
                                 const MergeWishes& wishes = {.allow_unfilled = true, .stop = {}}) {
    LayoutSettings settings;
    settings.worker_program = std::filesystem::path(ZEMLO_BINARY_DIR) / "bin" / program;
    settings.work_folder = folder_ / "work";
    settings.workers = workers;
    LayoutPool pool(settings);
    std::map<int, MergeResult> results;
    begun_ = RunMergeJobs(jobs, pool, wishes,
                          [&](const MergeResult& result) { results.emplace(result.number, result); });
    return results;
  }

  /// The reasons why these jobs may not be done together; "" where they may.
  std::string Clashes(const std::vector<MergeJob>& jobs) {
    std::string reasons;
    for (const auto& clash : MergeClashes(jobs)) {
      reasons += std::to_string(clash.number) + ": " + clash.failure.value().description() + "\n";
    }
    return reasons;
  }

  tests::TemporaryFolder folder_;
  std::size_t begun_ = 0;
};

TEST_F(MergeJobsTest, MakesLettersWithTheRealOffice) {
  std::vector<MergeJob> jobs;
  for (int number = 1; number <= 6; ++number) {
    jobs.push_back(Job(number, "t.docx", ContextOf(number), "letter" + std::to_string(number) + ".pdf"));
  }
  const auto results = Run(jobs, "zemlo-office-worker", 2);
  ASSERT_EQ(results.size(), 6U);
  for (const auto& [number, result] : results) {
    ASSERT_FALSE(result.failure) << result.failure->description();
    EXPECT_THAT(PdfText(result.output), HasSubstr("Customer " + std::to_string(number)));
    EXPECT_THAT(result.not_filled, ElementsAre("PHONE"));
  }
}

TEST_F(MergeJobsTest, LetsAFailingJobCostItsOwnLineOnly) {
  const auto context = ContextOf(0);
  const auto results = Run({Job(1, "t.docx", context, "1.docx"), Job(2, "gone.docx", context, "2.pdf"),
                            Job(3, "t.docx", "bad.xml", "3.pdf"), Job(4, "t.docx", context, "4.txt"),
                            Job(5, "t.docx", context, "missing/5.pdf"), Job(6, "t.docx", context, "6.pdf")},
                           "zemlo-fake-worker", 1);
  const std::map<int, const char*> refused = {
      {2, "gone.docx"}, {3, ""}, {4, "4.txt\" is neither"}, {5, "missing"}};
  ASSERT_EQ(results.size(), 6U);
  for (const auto& [number, result] : results) {
    const auto refusal = refused.find(number);
    ASSERT_EQ(result.failure.has_value(), refusal != refused.end()) << number;
    EXPECT_EQ(std::filesystem::exists(result.output), !result.failure) << number;
    if (result.failure) {
      EXPECT_THAT(result.failure->description(), HasSubstr(refusal->second));
    }
  }
}

TEST_F(MergeJobsTest, RefusesALetterWithBookmarksThatNothingFills) {
  platform::WriteScratchFile(folder_ / "other.xml", "<XML_CONTEXT><CITY>Carson</CITY></XML_CONTEXT>");
  platform::WriteScratchFile(folder_ / "whole.xml",
                             "<XML_CONTEXT><NAME>A</NAME><PHONE>B</PHONE></XML_CONTEXT>");
  const auto results = Run({Job(1, "t.docx", ContextOf(1), "1.docx"), Job(2, "t.docx", "other.xml", "2.pdf"),
                            Job(3, "t.docx", "whole.xml", "3.docx")},
                           "zemlo-fake-worker", 1, {});
  EXPECT_THAT(results.at(1).failure.value().description(),
              AllOf(HasSubstr("not filled: PHONE"), Not(HasSubstr("NAME"))));
  EXPECT_THAT(results.at(2).failure.value().description(),
              AllOf(HasSubstr("other.xml\" fills none"), HasSubstr("NAME, PHONE")));
  EXPECT_FALSE(results.at(3).failure);
  EXPECT_FALSE(std::filesystem::exists(results.at(1).output) ||
               std::filesystem::exists(results.at(2).output));
}

TEST_F(MergeJobsTest, NamesLettersThatWouldOverwriteOneAnotherOrWhatTheyAreMadeOf) {
  const auto context = ContextOf(1);
  std::filesystem::create_directory(folder_ / "out");
  std::filesystem::create_directory_symlink("out", folder_ / "same");
  std::filesystem::create_symlink("a.docx", folder_ / "out" / "to_be.docx");
  std::filesystem::create_symlink("../t.docx", folder_ / "out" / "template.docx");
  std::filesystem::create_hard_link(folder_ / context, folder_ / "out" / "context.docx");
  EXPECT_EQ(Clashes({Job(1, "t.docx", context, "out/a.docx"), Job(2, "t.docx", context, "out/a.pdf"),
                     Job(3, "t.docx", context, "a.docx"), Job(4, "t.docx", context, "missing/a.docx")}),
            "");
  for (const auto* other :
       {"out/a.docx", "out/../out/./a.docx", "same/a.docx", "out//a.docx", "out/to_be.docx"}) {
    EXPECT_THAT(Clashes({Job(1, "t.docx", context, "out/a.docx"), Job(2, "t.docx", context, other)}),
                AllOf(StartsWith("2: "), HasSubstr("line 1")))
        << other;
  }
  for (const auto* input : {"t.docx", "./t.docx", "out/template.docx", "same/context.docx"}) {
    EXPECT_THAT(Clashes({Job(1, "t.docx", context, "1.docx"), Job(5, "u.docx", "d.xml", input)}),
                AllOf(StartsWith("5: "), HasSubstr("line 1"), HasSubstr("overwrite")))
        << input;
    EXPECT_THAT(Clashes({Job(1, "t.docx", context, input)}), HasSubstr("made of")) << input;
  }
  EXPECT_THAT(Clashes({Job(1, "t.docx", context, "new.docx"), Job(2, "new.docx", context, "2.docx")}),
              StartsWith("1: "));
  const auto here = std::filesystem::current_path();
  std::filesystem::current_path(folder_.path());
  EXPECT_THAT(
      Clashes({{1, "t.docx", context, "out/a.docx"}, {2, "t.docx", context, folder_ / "same/a.docx"}}),
      StartsWith("2: "));
  std::filesystem::current_path(here);
}

TEST_F(MergeJobsTest, BeginsNoFurtherLetterWhenItIsToldToStop) {
  std::vector<MergeJob> jobs;
  for (int number = 1; number <= 30; ++number) {
    jobs.push_back(Job(number, "t.docx", ContextOf(number), std::to_string(number) + ".pdf"));
  }
  int asked = 0;
  const auto results =
      Run(jobs, "zemlo-fake-worker", 1, {.allow_unfilled = true, .stop = [&asked] { return ++asked > 7; }});
  EXPECT_EQ(begun_, 7U);
  EXPECT_EQ(results.size(), 7U);
  for (const auto& [number, result] : results) {
    EXPECT_FALSE(result.failure) << number;
    EXPECT_TRUE(std::filesystem::exists(result.output)) << number;
  }
  EXPECT_FALSE(std::filesystem::exists(folder_ / "8.pdf"));
}

TEST_F(MergeJobsTest, StartsNoLayoutForDocuments) {
  const auto results = Run({Job(1, "t.docx", ContextOf(1), "1.docx")}, "no-such-program", 1);
  EXPECT_FALSE(results.at(1).failure);
  EXPECT_FALSE(std::filesystem::exists(folder_ / "work"));
}

}  // namespace
}  // namespace wordprocessor
