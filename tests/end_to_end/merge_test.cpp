#include <gmock/gmock.h>

#include "tests/end_to_end/program.h"

namespace tests {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

/// Letters made of files, without an office's data.
class MergeProgram : public testing::Test {
 protected:
  MergeProgram() {
    std::filesystem::copy_file(std::filesystem::path(ZEMLO_SOURCE_DIR) / "data/templates/REG101_2401.docx",
                               template_);
    WriteFile(context_, "<XML_CONTEXT><CUSTOMER_NAME>Merge</CUSTOMER_NAME></XML_CONTEXT>");
    std::filesystem::create_directory(out_);
  }
  std::string Line(const std::string& output) const {
    return template_.string() + "\t" + context_.string() + "\t" + (out_ / output).string() + "\n";
  }
  Outcome Merge(const std::string& list, const std::vector<std::string>& options) const {
    WriteFile(folder_ / "jobs.txt", list);
    std::vector<std::string> words = {"merge", "--jobs", (folder_ / "jobs.txt").string()};
    words.insert(words.end(), options.begin(), options.end());
    return RunLetters(words);
  }

  const TemporaryFolder folder_;
  const std::filesystem::path template_ = folder_ / "letter.docx";
  const std::filesystem::path context_ = folder_ / "context.xml";
  const std::filesystem::path out_ = folder_ / "out";
};

// Two lines of one name counted as two letters, and one was gone; a letter under its template's name replaced
// it.
TEST_F(MergeProgram, MakesNothingOfAListInWhichALetterWouldBeLost) {
  const auto template_before = ReadFile(template_);
  const auto twice = Merge(Line("a.docx") + Line("b.docx") + Line("../out/a.docx"), {"--allow-unfilled"});
  EXPECT_EQ(twice.status, 1);
  EXPECT_THAT(twice.err, AllOf(HasSubstr("Line 3: "), HasSubstr("line 1"), HasSubstr("Nothing was made.")));
  const auto itself = RunLetters({"merge", template_.string(), context_.string(),
                                  (out_ / "../letter.docx").string(), "--allow-unfilled"});
  EXPECT_EQ(itself.status, 1);
  EXPECT_THAT(itself.err, HasSubstr("overwrite"));
  EXPECT_THAT(FilesIn(out_), IsEmpty());
  EXPECT_EQ(ReadFile(template_), template_before);
}

TEST_F(MergeProgram, RefusesALetterWithBookmarksThatNothingFillsUnlessItIsAllowed) {
  const auto refused = Merge(Line("a.docx"), {});
  EXPECT_EQ(refused.status, 1);
  EXPECT_THAT(refused.err,
              AllOf(HasSubstr("LTR_DT"), Not(HasSubstr("CUSTOMER_NAME")), HasSubstr("--allow-unfilled")));
  EXPECT_THAT(FilesIn(out_), IsEmpty());
  const auto allowed = Merge(Line("a.docx"), {"--allow-unfilled"});
  EXPECT_EQ(allowed.status, 0);
  EXPECT_THAT(allowed.err, HasSubstr("LTR_DT"));
  EXPECT_EQ(allowed.out, (out_ / "a.docx").string() + "\n");
  EXPECT_THAT(Merge(Line("b.docx"), {"--allow-unfilled", "--quiet"}).err, IsEmpty());
}

TEST_F(MergeProgram, ReadsTheListFromStandardInputAndPassesOverComments) {
  WriteFile(folder_ / "list", "# Monday\n\n" + Line("a.docx"));
  const auto run = RunShell(Quoted(std::string(ZEMLO_BINARY_DIR) + "/bin/zemlo-letters") +
                            " merge --allow-unfilled --jobs - < " + Quoted((folder_ / "list").string()));
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_THAT(FilesIn(out_), SizeIs(1));
}

// A run of some hundred letters ended by Ctrl+C had made sixty of them and named none.
TEST_F(MergeProgram, EndedByASignalSaysWhatItHasMade) {
  std::string list;
  for (int number = 1; number <= 5'000; ++number) list += Line(std::to_string(number) + ".pdf");
  WriteFile(folder_ / "list", list);
  for (const auto& [signal, number] : {std::pair("INT", 130), std::pair("TERM", 143)}) {
    const auto names = Quoted((folder_ / signal).string());
    // A shell starts background programs with SIGINT ignored.
    const auto run =
        RunShell("env --default-signal=INT " + Quoted(std::string(ZEMLO_BINARY_DIR) + "/bin/zemlo-letters") +
                 " merge --allow-unfilled --jobs " + Quoted((folder_ / "list").string()) + " > " + names +
                 " & for i in $(seq 600); do [ -s " + names + " ] && break; sleep 0.1; done; kill -" +
                 signal + " $!; wait $!");
    EXPECT_EQ(run.status, number) << run.err;
    EXPECT_THAT(run.err, AllOf(HasSubstr("Ended by a signal"), HasSubstr("to 5000.")));
    std::istringstream made(ReadFile(folder_ / signal));
    std::size_t count = 0;
    for (std::string name; std::getline(made, name); ++count)
      EXPECT_TRUE(std::filesystem::exists(name)) << name;
    EXPECT_THAT(run.err, HasSubstr(": " + std::to_string(count) + " letters are made"));
    EXPECT_THAT(FilesIn(out_), SizeIs(count))
        << "a letter that was made is not named, or half of one is left";
    for (const auto& file : FilesIn(out_)) std::filesystem::remove(file);
  }
}

}  // namespace
}  // namespace tests
