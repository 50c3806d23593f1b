#include <gmock/gmock.h>
#include <signal.h>

#include <string>

#include "tests/end_to_end/program.h"

namespace tests {
namespace {

using testing::AllOf;
using testing::HasSubstr;

/// The nightly run as a timer starts it.
class Night : public testing::Test {
 protected:
  Night() {
    const auto made =
        RunLetters({"init", "--demo", "--data", data_.string(), "--customers", "60", "--letters", "300"});
    EXPECT_EQ(made.status, 0) << made.err;
  }
  Outcome Run(const std::vector<std::string>& words, const std::string& environment = "") {
    std::vector<std::string> all = words;
    all.insert(all.end(), {"--data", data_.string()});
    return RunProgram("zemlo-night", all, environment);
  }
  std::string Sql(const std::string& statement) {
    const auto ran = RunShell("sqlite3 -noheader " + Quoted((data_ / "server/server.db").string()) + " " +
                              Quoted(statement));
    EXPECT_EQ(ran.err, "");
    return ran.out.substr(0, ran.out.find('\n'));
  }
  void ExpectCountsOfLetters() {
    EXPECT_EQ(Sql("SELECT COUNT(*) FROM batch_run WHERE (BTCH_LTR_CNT, LTR_PRCS_CNT, LTR_SCS_CNT) <> (SELECT "
                  "COUNT(*),"
                  " COUNT(RSLT_CD), COALESCE(SUM(RSLT_CD = 'S'), 0) FROM batch_letter WHERE"
                  " batch_letter.BTCH_SEQ_NBR = batch_run.BTCH_SEQ_NBR)"),
              "0");
  }
  /// The letters of real runs that lie in the folder of batches.
  std::size_t Filed() const {
    std::size_t files = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(data_ / "batches"))
      files += entry.path().extension() == ".pdf" && entry.path().filename() != "all letters.pdf" ? 1 : 0;
    return files;
  }

  const TemporaryFolder folder_;
  const std::filesystem::path data_ = folder_ / "office";
};

TEST_F(Night, MakesWhatIsDueOnceAndFilesItByTypeAndDistrict) {
  const auto due = Run({"run", "--dry-run"});
  EXPECT_EQ(due.status, 0) << due.err;
  EXPECT_THAT(due.out, HasSubstr("overdue"));
  const auto made = Run({"run"});
  EXPECT_THAT(made.out, HasSubstr(" due, "));
  const auto run = Sql("SELECT MAX(BTCH_SEQ_NBR) FROM batch_run");
  EXPECT_EQ(Sql("SELECT LTR_SCS_CNT FROM batch_run WHERE BTCH_SEQ_NBR = " + run), std::to_string(Filed()));
  ASSERT_GT(Filed(), 3U);
  EXPECT_EQ(Sql("SELECT COUNT(*) FROM letter_history WHERE FLS_BTCH_NBR = " + run +
                " AND PRNT_STTS_CD <>"
                " CASE WHEN LTR_TYP_ID IN ('109', '110') THEN 'M' ELSE 'P' END AND PRCS_ERR_TXT IS NULL"),
            "0");
  for (const auto& entry : std::filesystem::recursive_directory_iterator(data_ / "batches" / run)) {
    if (entry.path().filename() != "letters.csv") continue;
    const auto rows = ReadFile(entry.path());
    const auto letters = std::ranges::count(rows, '\n') - 1;
    EXPECT_EQ(RunShell("pdftotext " + Quoted(entry.path().parent_path() / "all letters.pdf") +
                       " - | grep -c 'Our reference'")
                  .out,
              std::to_string(letters) + "\n");
  }
  EXPECT_THAT(RunLetters({"batches", "--data", data_.string(), "--json"}).out,
              HasSubstr("\"BTCH_SEQ_NBR\": \"" + run + "\""));
  EXPECT_THAT(RunLetters({"batch-stat", run, "--data", data_.string()}).out,
              HasSubstr("Notice of Overdue Return"));
  EXPECT_THAT(Run({"run"}).out, HasSubstr(": 0 due, 0 made"));
  ExpectCountsOfLetters();
}

TEST_F(Night, KilledAtAnyMomentLosesNothingAndMakesNothingTwice) {
  const auto due = std::stoul(RunShell(Quoted(std::string(ZEMLO_BINARY_DIR) + "/bin/zemlo-night") +
                                       " due --data " + Quoted(data_.string()) + " | tail -n +2 | wc -l")
                                  .out);
  const auto before = std::stoul(Sql("SELECT COUNT(*) FROM letter_history WHERE PRNT_STTS_CD <> 'W'"));
  for (int kill = 1; kill <= 12; ++kill) {
    Run({"run"}, "timeout -s KILL " + std::to_string(kill * 0.13));
    ExpectCountsOfLetters();
  }
  const auto last = Run({"run"});
  EXPECT_LE(last.status, 1) << last.err;
  EXPECT_EQ(std::stoul(Sql("SELECT COUNT(*) FROM letter_history WHERE PRNT_STTS_CD <> 'W'")), before + due);
  EXPECT_EQ(
      Sql("SELECT COUNT(*) FROM (SELECT 1 FROM batch_letter WHERE SRC_CD = 'RUL' AND RSLT_CD IS NOT NULL AND"
          " BTCH_SEQ_NBR > (SELECT MAX(BTCH_SEQ_NBR) FROM batch_run WHERE WRKR_TXT LIKE '%demo%')"
          " GROUP BY FORM_NBR, FORM_TYP_CD, LTR_TYP_ID HAVING COUNT(*) > 1)"),
      "0");
  EXPECT_EQ(Sql("SELECT COUNT(*) FROM batch_run WHERE BTCH_STATUS = 'RUNNING'"), "0");
  EXPECT_EQ(Sql("SELECT SUM(LTR_SCS_CNT) FROM batch_run WHERE WRKR_TXT NOT LIKE '%demo%'"),
            std::to_string(Filed()));
  EXPECT_EQ(RunShell("find " + Quoted((data_ / "batches").string()) + " -name '*.part'").out, "");
  ExpectCountsOfLetters();
}

TEST_F(Night, DoesNotStartWithWrongRulesOrBesideAnotherRun) {
  WriteFile(data_ / "server/batch_rules.tsv", "RULE_NM\tLTR_TYP_ID\nbad\t110\n");
  const auto wrong = Run({"run"});
  EXPECT_EQ(wrong.status, 3);
  EXPECT_THAT(wrong.err, AllOf(HasSubstr("batch_rules.tsv"), HasSubstr("No letter was made.")));
  EXPECT_EQ(Sql("SELECT COUNT(*) FROM batch_run WHERE WRKR_TXT NOT LIKE '%demo%'"), "0");
  EXPECT_EQ(Run({"run", "--date", "soon"}).status, 2);
  EXPECT_EQ(Run({"abandon", "4711"}).status, 1);
}

}  // namespace
}  // namespace tests
