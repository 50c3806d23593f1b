#include "server/history/batch_items.h"

#include "tests/server/server_world.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using tests::Record;

class BatchItems : public tests::ServerTest {
 protected:
  void Execute(const std::string& statement) {
    server::Database database(server::DatabaseFile(folder_.path()), server::Database::Opening::kExisting);
    database.Change(statement);
  }
  /// Records a letter of that status; returns its number.
  std::string Letter(const std::string& status) {
    const auto key = "letter " + std::to_string(++letters_);
    EXPECT_EQ(Ask(PrintedLetter(key)).error, "");
    Execute("UPDATE letter_history SET PRNT_STTS_CD = '" + status +
            "', PRCS_ERR_TXT = 'Why.' WHERE SEQ_NBR = " + std::to_string(letters_));
    return std::to_string(letters_);
  }
  server::Reply Give(const std::vector<std::pair<std::string, std::string>>& items, const std::string& key) {
    std::vector<fakes::Row> rows;
    for (const auto& [action, letter] : items) rows.push_back({{"ACTION", action}, {"SEQ_NBR", letter}});
    return Ask({.type = 82, .records = {{"CORR_BITEM", rows}}, .message_key = key});
  }
  /// Outcome, batch action and print status of each letter, as the reply tells them.
  std::vector<std::string> Outcomes(const std::vector<std::pair<std::string, std::string>>& items) {
    const auto reply = Give(items, "give " + std::to_string(++asked_));
    EXPECT_EQ(reply.error, "");
    const auto* rows = Record(reply, "CORR_BITEM_OUTCOME");
    std::vector<std::string> outcomes;
    for (std::size_t row = 0; row < rows->RecordCount(); ++row) {
      outcomes.push_back(rows->Text(row, "OUTCOME") + " " + rows->Text(row, "BTCH_ACTN_CD") + " " +
                         rows->Text(row, "PRNT_STTS_CD"));
      memo_ = rows->Text(row, "MEMO");
    }
    return outcomes;
  }
  /// Number, action, user and run of what waits.
  std::vector<std::string> Waiting() {
    const auto reply = Ask({.type = 79, .keys = {{"key:BATCH_ITEMS", "Y"}}});
    EXPECT_EQ(reply.error, "");
    std::vector<std::string> items;
    const auto* rows = Record(reply, "CORR_BITEM_WAITING");
    for (std::size_t row = 0; rows != nullptr && row < rows->RecordCount(); ++row) {
      items.push_back(rows->Text(row, "SEQ_NBR") + " " + rows->Text(row, "ACTION") + " " +
                      rows->Text(row, "RQST_USER_ID") + " " + rows->Text(row, "BTCH_SEQ_NBR"));
    }
    return items;
  }

  std::string memo_;  ///< of the last letter asked about

 private:
  int letters_ = 0;
  int asked_ = 0;
};

TEST_F(BatchItems, WaitOnceHoweverOftenTheyAreAskedFor) {
  const auto failed = Letter("F");
  const auto incomplete = Letter("E");
  EXPECT_THAT(Waiting(), ElementsAre());
  EXPECT_THAT(Outcomes({{"REP", failed}, {"REB", incomplete}, {"REP", failed}}),
              ElementsAre("T REP F", "T REB W", "A REP F"));
  EXPECT_EQ(memo_, "Letter 1 was waiting for the batch run already.");
  EXPECT_THAT(Outcomes({{"REB", incomplete}}), ElementsAre("A REB W"));
  EXPECT_THAT(Waiting(), ElementsAre("1 REP DEMO01 ", "2 REB DEMO01 "));
}

TEST_F(BatchItems, TakenBackLeaveTheLetterAsItWas) {
  const auto letter = Letter("V");
  Execute("UPDATE letter_history SET BTCH_ACTN_CD = 'RUN'");
  EXPECT_THAT(Outcomes({{"REB", letter}, {"REP", letter}, {"DEL", letter}, {"DEL", letter}}),
              ElementsAre("T REB W", "T REP V", "T RUN V", "R RUN V"));
  EXPECT_EQ(memo_, "Letter 1 does not wait for the batch run.");
  server::Database database(server::DatabaseFile(folder_.path()), server::Database::Opening::kExisting);
  EXPECT_EQ(database.Select("SELECT PRCS_ERR_TXT FROM letter_history")->FirstText(), "Why.");
}

TEST_F(BatchItems, OfALetterThatIsPrintedMeanwhileGoOnWaiting) {
  const auto letter = Letter("V");
  Outcomes({{"REB", letter}});
  EXPECT_EQ(Ask(Reprint("again", letter)).records.at(0).rows->Text("PRNT_STTS_CD"), "W");
  EXPECT_THAT(Outcomes({{"DEL", letter}}), ElementsAre("T  P"));
}

TEST_F(BatchItems, AreTakenByTheStatusesOfTheCodeTable) {
  // Resubmission: all that can be made or printed again; a reprint: also what it allows by itself.
  Execute("UPDATE letter_action SET PRNT_STTS_TXT = 'VE' WHERE ACTN_CD = 'RES'");
  Execute("UPDATE letter_action SET PRNT_STTS_TXT = 'PSF' WHERE ACTN_CD = 'REP'");
  EXPECT_THAT(
      Outcomes({{"REP", Letter("P")}, {"REB", Letter("P")}, {"REP", Letter("E")}, {"REB", Letter("E")}}),
      ElementsAre("T REP P", "R  P", "T REP E", "T REB W"));
  EXPECT_THAT(Outcomes({{"REP", Letter("W")}}), ElementsAre("R  W"));
  EXPECT_EQ(memo_, "Letter 5 was not taken: its print status \"W\" does not allow it.");
  Execute("DELETE FROM letter_action");
  EXPECT_THAT(Outcomes({{"REB", "5"}}), ElementsAre("T REB W"));
}

TEST_F(BatchItems, ThatARunHasClaimedAndLettersThatAreGoneAreRefusedAndTheOthersTaken) {
  const auto claimed = Letter("F");
  const auto other = Letter("F");
  Outcomes({{"REP", claimed}});
  Execute("UPDATE batch_item SET BTCH_SEQ_NBR = 2097");
  for (const auto* action : {"REP", "REB", "DEL"}) {
    EXPECT_THAT(Outcomes({{"REP", "4711"}, {"REB", other}, {action, claimed}}),
                ElementsAre("R  ", testing::EndsWith(" REB W"), "R REP F"));
    EXPECT_THAT(memo_, HasSubstr("is being worked on by batch run 2097."));
  }
  EXPECT_THAT(Waiting(), ElementsAre("1 REP DEMO01 2097", "2 REB DEMO01 "));
}

TEST_F(BatchItems, ThatAreNoneTakeNothing) {
  const auto letter = Letter("F");
  for (const auto& [action, number] :
       std::vector<std::pair<std::string, std::string>>{{"RUN", letter}, {"", letter}, {"REP", "one"}}) {
    EXPECT_NE(Give({{"REP", letter}, {action, number}}, "wrong" + action + number).error, "");
  }
  EXPECT_NE(Give({}, "none").error, "");
  EXPECT_NE(Ask({.type = 79, .keys = {{"key:BATCH_ITEMS", "N"}}}).error, "");
  EXPECT_THAT(Waiting(), ElementsAre());
}

TEST_F(BatchItems, AskedForAgainByTheSameMessageAreAnsweredAsBefore) {
  const auto letter = Letter("F");
  for (int time = 0; time < 2; ++time)
    EXPECT_EQ(Record(Give({{"REP", letter}}, "the same"), "CORR_BITEM_OUTCOME")->Text("OUTCOME"), "T");
}

}  // namespace
