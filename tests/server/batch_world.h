#pragma once

#include <string>
#include <vector>

#include "server/batch/batch_runs.h"
#include "tests/server/server_world.h"

namespace tests {

/// A server whose data the test's own program works on as well, as a night does.
class BatchTest : public ServerTest {
 protected:
  /// Letters that were printed on line.
  std::vector<std::int64_t> RecordLetters(int count) {
    std::vector<std::int64_t> numbers;
    for (int letter = 0; letter < count; ++letter) {
      const auto reply = Ask(PrintedLetter("letter-" + std::to_string(letter)));
      numbers.push_back(Record(reply, "CORRHIST")->Get(0, "SEQ_NBR").AsInteger());
    }
    return numbers;
  }
  static server::RunItem Item(std::int64_t letter, const char* source = "RUL") {
    return {.source = source, .letter_type = "101", .customer = "100001", .letter = letter};
  }
  /// One column of a reply's record; empty where there is none.
  static std::vector<std::string> Texts(const server::Reply& reply, const char* record, const char* column) {
    std::vector<std::string> texts;
    const auto* rows = Record(reply, record);
    for (std::size_t row = 0; rows != nullptr && row < rows->RecordCount(); ++row)
      texts.push_back(rows->Text(row, column));
    return texts;
  }
  /// That each run's counts are those of its letters.
  void ExpectCountsOfLetters() {
    EXPECT_TRUE(
        database_
            .Select(R"(SELECT BTCH_SEQ_NBR FROM batch_run WHERE (BTCH_LTR_CNT, LTR_PRCS_CNT, LTR_SCS_CNT) <>
                         (SELECT COUNT(*), COUNT(RSLT_CD), COALESCE(SUM(CASE RSLT_CD WHEN 'S' THEN 1 ELSE 0 END), 0)
                          FROM batch_letter WHERE batch_letter.BTCH_SEQ_NBR = batch_run.BTCH_SEQ_NBR))")
            ->IsEmpty());
  }

  server::Database database_{server::DatabaseFile(folder_.path()), server::Database::Opening::kExisting};
};

}  // namespace tests
