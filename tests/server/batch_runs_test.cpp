#include "server/batch/batch_runs.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "tests/server/batch_world.h"
#include "tests/support/failing.h"

namespace server {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using tests::Question;

class BatchRuns : public tests::BatchTest {
 protected:
  static Question Search(std::vector<std::pair<std::string, std::string>> keys) {
    keys.emplace_back("key:THIN", "YES");
    return {.type = 79, .keys = std::move(keys)};
  }
  static Question Again(std::int64_t run, const std::string& message_key) {
    return {.type = 82, .keys = {{"key:ReprintBatch", std::to_string(run)}}, .message_key = message_key};
  }
  std::vector<std::string> Found(const Question& question, const char* column = "BTCH_SEQ_NBR") {
    const auto reply = Ask(question);
    EXPECT_EQ(reply.error, "");
    return Texts(reply, "CORRBATCH", column);
  }
  /// A run of these letters, all of them made.
  std::int64_t GivenRun(const char* time, const std::vector<RunItem>& items) {
    const auto now = *platform::ParseTimestamp(time);
    const auto run = CreateRun(database_, items, now, "a test");
    for (std::size_t item = 1; item <= items.size(); ++item) {
      const auto letter = items[item - 1].letter;
      RecordItem(database_, run, static_cast<std::int64_t>(item), letter.value_or(0), ItemResult::kSucceeded);
    }
    EndRun(database_, run, now + std::chrono::minutes(5));
    return run;
  }
};

TEST_F(BatchRuns, EndWithTheStatusOfTheirLetters) {
  const auto letters = RecordLetters(3);
  const auto begun = *platform::ParseTimestamp("2026-11-22 01.00.00");
  struct Case {
    std::vector<ItemResult> results;
    const char* status;
    const char* found_by;
  };
  const auto good = ItemResult::kSucceeded;
  const auto bad = ItemResult::kFailed;
  const std::vector<Case> cases = {{{good, bad, good}, "SUCCESSFUL", "S"},
                                   {{good, good}, "INCOMPLETE", "P"},
                                   {{bad, bad, bad}, "FAILED", "F"}};
  for (const auto& [results, status, found_by] : cases) {
    std::vector<RunItem> items;
    for (const auto letter : letters) items.push_back(Item(letter));
    const auto run = CreateRun(database_, items, begun, "a test");
    EXPECT_THAT(Found(Search({{"key:STATUS", "P"}}), "BTCH_STATUS"), testing::Contains("RUNNING"));
    for (std::size_t item = 0; item < results.size(); ++item)
      RecordItem(database_, run, static_cast<std::int64_t>(item) + 1, letters[item], results[item]);
    EXPECT_THAT([&] { RecordItem(database_, run, 1, letters[0], good); },
                tests::FailsSaying(HasSubstr("has been recorded already")));
    EndRun(database_, run, begun + std::chrono::minutes(5));
    EXPECT_EQ(FindRunningRun(database_), std::nullopt);
    const auto reply = Ask(Search({{"key:STATUS", found_by}}));
    EXPECT_EQ(Texts(reply, "CORRBATCH", "BTCH_SEQ_NBR").front(), std::to_string(run));
    EXPECT_EQ(Texts(reply, "CORRBATCH", "BTCH_STATUS").front(), status);
    EXPECT_EQ(Texts(reply, "CORRBATCH", "LTR_PRCS_CNT").front(), std::to_string(results.size()));
    EXPECT_EQ(Texts(reply, "CORRBATCH", "LTR_FAIL_CNT").front(),
              std::to_string(std::ranges::count(results, bad)));
  }
  ExpectCountsOfLetters();
}

TEST_F(BatchRuns, AreFoundByTheDayOfTheirNight) {
  const auto morning = std::to_string(GivenRun("2026-11-21 01.00.00", {}));
  const auto evening = std::to_string(GivenRun("2026-11-21 22.30.00", {}));
  EXPECT_THAT(Found(Search({{"key:BATCH_START_DT", "2026-11-21"}})), ElementsAre(evening, morning));
  EXPECT_THAT(Found(Search({{"key:BATCH_START_DT", "2026-11-22"}})), ElementsAre(evening));
  EXPECT_THAT(Found(Search({{"key:BATCH_START_DT", "2026-11-20"}})), IsEmpty());
  auto range = Search({{"key:STATUS", "A"}});
  range.key_items = {platform::Criterion("key:BATCH_START_DT", "2026-11-19 and 2026-11-21", "between")};
  EXPECT_THAT(Found(range), ElementsAre(evening, morning));
  EXPECT_THAT(Found(Search({})), ElementsAre(evening, morning)) << "neither day nor status";
  EXPECT_THAT(Ask(Search({{"key:STATUS", "Z"}})).error, HasSubstr("\"Z\""));
}

TEST_F(BatchRuns, CountTheirAccountsByWhatTheseOwe) {
  const auto letters = RecordLetters(3);
  const auto owing = database_.Select(R"(SELECT form.* FROM form JOIN tax_period ON
      form.FORM_TYP_CD = tax_period.FORM_TYP_CD AND form.FORM_NBR = tax_period.FORM_NBR WHERE TAX_AMT > 0 LIMIT 1)");
  std::vector<RunItem> items = {Item(letters[0]), Item(letters[1]), Item(letters[2])};
  items[0].form_type = owing->Text("FORM_TYP_CD");
  items[0].form_number = owing->Text("FORM_NBR");
  items[1].form_type = "C";
  items[1].form_number = "9999999";  // owes nothing
  const auto run = std::to_string(GivenRun("2026-11-22 01.00.00", items));
  const Question statistics = {.type = 79,
                               .keys = {{"key:BATCH_NBR", run}, {"key:BATCHSTAT", "Y"}, {"key:THIN", "YES"}}};
  for (const auto* column : {"PAID_COUNT", "UNPAID_COUNT"}) {
    EXPECT_THAT(Found(Search({{"key:STATUS", "A"}}), column), ElementsAre("1"));
    EXPECT_THAT(Texts(Ask(statistics), "CORRSTAT", column), ElementsAre("1"));
  }
  database_.Change("UPDATE tax_period SET TAX_AMT = 0, PNLTY_AMT = 0, INTRST_AMT = 0");
  EXPECT_THAT(Texts(Ask(statistics), "CORRSTAT", "PAID_COUNT"), ElementsAre("2"));
  EXPECT_THAT(Texts(Ask(statistics), "CORRSTAT", "SUCCESS_COUNT"), ElementsAre("3"));
  EXPECT_THAT(Ask({.type = 79, .keys = {{"key:BATCH_NBR", "4711"}, {"key:BATCHSTAT", "Y"}}}).error,
              HasSubstr("\"4711\""));
}

TEST_F(BatchRuns, AreResubmittedWholeOnce) {
  const auto letters = RecordLetters(2);
  const auto run = GivenRun("2026-11-22 01.00.00", {Item(letters[0]), Item(letters[1])});
  EXPECT_THAT(Texts(Ask(Again(run, "again-1")), "CORR_BITEM_OUTCOME", "OUTCOME"), ElementsAre("T", "T"));
  EXPECT_THAT(Texts(Ask(Again(run, "again-2")), "CORR_BITEM_OUTCOME", "OUTCOME"), ElementsAre("A", "A"));
  // A run that claims them gives back what it does not come to.
  const auto next =
      CreateRun(database_, {Item(letters[0], "REB"), Item(letters[1], "REB")}, clock_.Now(), "a test");
  EXPECT_THAT(Ask(Again(next, "again-3")).error, HasSubstr("is running since"));
  EXPECT_THAT(Texts(Ask(Again(run, "again-4")), "CORR_BITEM_OUTCOME", "OUTCOME"), ElementsAre("R", "R"));
  RecordItem(database_, next, 1, letters[0], ItemResult::kSucceeded);
  EndRun(database_, next, clock_.Now());
  EXPECT_EQ(database_.Select("SELECT SEQ_NBR FROM batch_item WHERE BTCH_SEQ_NBR IS NULL")->FirstText(),
            std::to_string(letters[1]));
  EXPECT_THAT(Ask(Again(4711, "again-5")).error, HasSubstr("\"4711\""));
}

}  // namespace
}  // namespace server
