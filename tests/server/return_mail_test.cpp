#include "server/customers/return_mail.h"

#include "tests/server/server_world.h"

namespace {

using testing::HasSubstr;
using tests::Record;

class ReturnMail : public tests::ServerTest {
 protected:
  void Execute(const std::string& statement) {
    server::Database database(server::DatabaseFile(folder_.path()), server::Database::Opening::kExisting);
    database.Change(statement);
  }
  std::string Stored(const std::string& select) {
    server::Database database(server::DatabaseFile(folder_.path()), server::Database::Opening::kExisting);
    return database.Select(select)->FirstText();
  }
  /// Marks of the customer, number of their changes, letters that are noted.
  std::string State() {
    return Stored(
        "SELECT MAIL_BAD_FLG || RES_BAD_FLG || UPDT_NBR || ' ' ||"
        " (SELECT COUNT(*) FROM returned_mail WHERE CLRD_TS IS NULL) FROM customer WHERE CUST_ID ="
        " '100001'");
  }
  /// What came of it; its sentence in memo_.
  std::string Return(const std::string& letter) {
    const auto reply = Ask({.type = 82,
                            .keys = {{"key:ReturnMail", letter}},
                            .message_key = "returned " + std::to_string(++asked_)});
    EXPECT_EQ(reply.error, "");
    const auto* row = Record(reply, "RETURN_MAIL");
    memo_ = row->Text("MEMO");
    return row->Text("OUTCOME");
  }
  void GivenLetter(fakes::Row changes = {}) {
    Ask(PrintedLetter("letter " + std::to_string(++asked_), std::move(changes)));
  }

  std::string memo_;

 private:
  int asked_ = 0;
};

TEST_F(ReturnMail, MarksTheAddressThatTheLetterWasSentTo) {
  GivenLetter();
  GivenLetter();
  GivenLetter({{"ADDR_TYP_CD", 2}});
  EXPECT_EQ(Return("1"), "T");
  EXPECT_EQ(memo_, "The mailing address of customer 100001 is marked now: mail comes back from it.");
  EXPECT_EQ(State(), "YN2 1");
  EXPECT_EQ(Return("1"), "A");
  EXPECT_EQ(State(), "YN2 1");
  EXPECT_EQ(Return("2"), "T") << "another letter to the same address";
  EXPECT_EQ(State(), "YN2 2");
  EXPECT_EQ(Return("3"), "T");
  EXPECT_EQ(State(), "YY3 3");
  // What finds the customer, what shows it and what shows the letter have the marks as well.
  const tests::Question questions[] = {
      {.type = 7, .key_items = {platform::Criterion("key:CUST_FIND", "100001", "like")}},
      {.type = 7, .keys = {{"key:CUST_ID", "100001"}}},
      Fetch("1")};
  for (const auto& question : questions) {
    const auto reply = Ask(question);
    const auto* customer = Record(reply, "CUSTOMER");
    EXPECT_EQ(customer->Text("MAIL_RTND_IND") + customer->Text("RES_RTND_IND"), "YY");
  }
  EXPECT_EQ(Stored("SELECT RTND_DT || UPDT_USER_ID || ADDR_TYP_CD FROM returned_mail WHERE SEQ_NBR = 3"),
            "2026-11-22DEMO012");
  EXPECT_EQ(Stored("SELECT GROUP_CONCAT(COL_NM || OLD_TXT || NEW_TXT || UPDT_USER_ID) FROM customer_change"),
            "MAIL_RTND_INDNYDEMO01,RES_RTND_INDNYDEMO01");
}

TEST_F(ReturnMail, MarksNothingThatTheLetterDoesNotSay) {
  GivenLetter();
  GivenLetter({{"ADDR_TYP_CD", {}}});
  GivenLetter({{"PRNT_STTS_CD", "V"}, {"LST_PRNT_TS", {}}});
  GivenLetter();
  Execute("UPDATE letter_history SET PRNT_STTS_CD = 'F' WHERE SEQ_NBR = 4");
  const std::pair<const char*, const char*> cases[] = {{"99", "is not in the history any more"},
                                                       {"2", "does not say which address it went to"},
                                                       {"3", "its print status is \"V\""},
                                                       {"4", "its print status is \"F\""}};
  for (const auto& [letter, why] : cases) {
    EXPECT_EQ(Return(letter), "R");
    EXPECT_THAT(memo_, HasSubstr(why));
  }
  EXPECT_NE(Ask({.type = 82, .keys = {{"key:ReturnMail", "first"}}}).error, "");
  EXPECT_EQ(State(), "NN1 0");
}

TEST_F(ReturnMail, DoesNotMarkAnAddressThatHasBecomeAnotherPlaceSince) {
  GivenLetter();
  Execute("UPDATE letter_history SET LST_PRNT_TS = '2026-11-23 10.00.00'");  // the same sheet once more
  const auto changed = [&](int number, const std::string& what) {
    Execute(
        "INSERT INTO customer_change (CUST_ID, UPDT_NBR, UPDT_TS, UPDT_USER_ID, COL_NM, OLD_TXT) VALUES "
        "('100001', " +
        std::to_string(number) + ", " + what + ")");
  };
  changed(2, "'2026-11-22 10.00.00', 'DEMO02', 'RES_ADDR_1', '1 Elsewhere'");
  changed(3, "'2026-11-20 10.00.00', 'DEMO02', 'MAIL_ADDR_1', '1 Elsewhere'");
  changed(
      4, "'2026-11-22 10.00.00', 'DEMO02', 'MAIL_ADDR_1', (SELECT UPPER(MAIL_ADDR_1) FROM customer LIMIT 1)");
  EXPECT_EQ(Return("1"), "T") << "the other one was; this one before the letter, and by its capitals";
  EXPECT_EQ(State(), "YN5 1");
  Execute("UPDATE customer SET MAIL_BAD_FLG = 'N' WHERE CUST_ID = '100001'");
  changed(6, "'2026-11-22 11.00.00', 'DEMO02', 'MAIL_ADDR_1', '1 Elsewhere'");
  EXPECT_EQ(Return("1"), "T") << "it was elsewhere for an hour";
  Execute("DELETE FROM customer_change WHERE UPDT_NBR = 4");
  EXPECT_EQ(Return("1"), "R");
  EXPECT_EQ(memo_,
            "The mailing address of customer 100001 was changed on 2026-11-22, after letter 1 was made. "
            "It was not marked.");
}

TEST_F(ReturnMail, IsOverWhenItsMarkIsTakenAway) {
  for (int letter = 1; letter <= 3; ++letter) {
    GivenLetter();
    Return(std::to_string(letter));
  }
  // Two are to be printed as they were; a run is at one of them.
  EXPECT_EQ(Ask({.type = 82,
                 .records = {{"CORR_BITEM",
                              {{{"ACTION", "REP"}, {"SEQ_NBR", 2}}, {{"ACTION", "REP"}, {"SEQ_NBR", 3}}}}},
                 .message_key = "items"})
                .error,
            "");
  Execute("UPDATE batch_item SET BTCH_SEQ_NBR = 2097 WHERE SEQ_NBR = 3");
  const auto save = [&](const std::string& key, fakes::Row row, const std::string& version) {
    row.insert(row.begin(), {{"CUST_ID", "100001"}, {"ACTION", "UPD"}, {"FINALIST_IND", 0}});
    EXPECT_EQ(Ask({.type = 8,
                   .keys = {{"key:UPDT_NBR", version}},
                   .records = {{"Customer", {row}}},
                   .message_key = key})
                  .error,
              "");
  };
  save("m-1", {{"PHN_NBR", "5552345678"}}, "2");
  EXPECT_EQ(State(), "YN3 3");
  save("m-2", {{"MAIL_RTND_IND", "N"}}, "3");
  EXPECT_EQ(State(), "NN4 0");
  EXPECT_EQ(Stored("SELECT GROUP_CONCAT(PRNT_STTS_CD || BTCH_ACTN_CD) FROM letter_history"),
            "WREB,WREB,PREP");
}

}  // namespace
