#include <csignal>
#include <cstddef>
#include <random>

#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/server/server_world.h"

namespace {

/// What the engine writes with, and the write that is not to be survived.
namespace deadly {

enum class Way { kBefore, kHalfWay };

int writes_left = 0;
Way way = Way::kBefore;

ssize_t Write(int file, const void* bytes, std::size_t size, off_t offset) {
  if (--writes_left == 0) {
    if (way == Way::kHalfWay) [[maybe_unused]]
      const auto written = pwrite(file, bytes, size / 2, offset);
    raise(SIGKILL);
  }
  return pwrite(file, bytes, size, offset);
}

void KillAtWrite(int number, Way at) {
  writes_left = number;
  way = at;
  auto* files = sqlite3_vfs_find(nullptr);
  for (const auto* call : {"pwrite", "pwrite64"})
    files->xSetSystemCall(files, call, reinterpret_cast<sqlite3_syscall_ptr>(&Write));
}

}  // namespace deadly

/// A server that is killed in the middle of a change.
class KilledChange : public tests::ServerTest {
 protected:
  server::Reply AskAnother(const tests::Question& question) {
    fakes::FakeVerifier verifier;
    server::RequestProcessor processor(folder_.path(), {clock_, rights_, verifier});
    return server::ReadReply(processor.Answer(tests::WireText(question)));
  }
  /// Asks in a process of its own, after `begin` there. It ends with 0 once it has an answer without error.
  template <typename Begin>
  pid_t AskInProcess(const tests::Question& question, Begin begin) {
    const auto child = fork();
    if (child != 0) return child;
    begin();
    _exit(AskAnother(question).error.empty() ? 0 : 1);
  }
  /// Whether it was over before it was killed.
  static bool WasOver(pid_t child) {
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status) || WEXITSTATUS(status) == 0) << "the change was refused";
    return !WIFSIGNALED(status);
  }
  /// Kills a server before and half way through each write of the change, on data made anew by `given`.
  template <typename Given, typename Check>
  void KillAtEachWrite(const tests::Question& change, Given given, Check check) {
    for (const auto way : {deadly::Way::kBefore, deadly::Way::kHalfWay}) {
      int killed = 0;
      for (int write = 1;; ++write) {
        SCOPED_TRACE(write);
        std::filesystem::remove_all(folder_ / "server");
        tests::PrepareData(folder_.path());
        given();
        const bool over = WasOver(AskInProcess(change, [&] { deadly::KillAtWrite(write, way); }));
        check(over);
        if (over || HasFailure()) break;
        ++killed;
      }
      EXPECT_GT(killed, 3) << "nothing was written";
    }
  }
  void Execute(const std::string& statement) {
    server::Database database(server::DatabaseFile(folder_.path()), server::Database::Opening::kExisting);
    database.Change(statement);
  }
  /// The columns of one row, in one text.
  std::string Stored(const std::string& columns) const {
    server::Database database(server::DatabaseFile(folder_.path()), server::Database::Opening::kExisting);
    const auto row = database.Select("SELECT " + columns);
    std::string text;
    for (const auto& column : row->columns()) text += row->Text(column) + "|";
    return text;
  }
  std::size_t Found(const std::string& text) {
    const auto reply =
        AskAnother({.type = 7, .key_items = {platform::Criterion("key:CUST_FIND", text, "like")}});
    const auto* rows = tests::Record(reply, "CUSTOMER");
    return rows == nullptr ? 0 : rows->RecordCount();
  }
};

constexpr auto kLogged = "(SELECT COUNT(*) FROM request_log)";

tests::Question GiveToRun(int first, int count, const std::string& key) {
  std::vector<fakes::Row> rows;
  for (int letter = first; letter < first + count; ++letter)
    rows.push_back({{"ACTION", "REB"}, {"SEQ_NBR", letter}});
  return {.type = 82, .records = {{"CORR_BITEM", rows}}, .message_key = key};
}

tests::Question Returned(int letter, const std::string& key) {
  return {.type = 82, .keys = {{"key:ReturnMail", std::to_string(letter)}}, .message_key = key};
}

/// That many printed letters to the mailing and residential addresses of ten customers.
std::string Letters(int count) {
  return "WITH RECURSIVE number (N) AS (SELECT 0 UNION ALL SELECT N + 1 FROM number WHERE N + 1 < " +
         std::to_string(count) +
         ") INSERT INTO letter_history (LTR_TYP_ID, CUST_ID, PRNT_STTS_CD, ADDR_TYP_CD, LST_PRNT_TS)"
         " SELECT '101', 100001 + N % 10, 'P', 1 + N / 10 % 2, '2026-11-20 10.00.00' FROM number";
}

TEST_F(KilledChange, OfACustomerLeavesTheRegisterAsBeforeOrAsAfter) {
  const fakes::Row row = {
      {"CUST_ID", "100016"},     {"ACTION", "UPDF"},      {"CUST_BSNS_NM", "Whole Oar Fuels"},
      {"MAIL_ADDR_1", "1 A St"}, {"MAIL_ADDR_2", ""},     {"MAIL_CITY", "Hartsfield"},
      {"MAIL_ST", "KV"},         {"MAIL_ZIP_CD", "88312"}};
  const auto given = [&] {
    Execute("INSERT INTO letter_history (LTR_TYP_ID, CUST_ID, PRNT_STTS_CD) VALUES ('101', '100016', 'V')");
  };
  KillAtEachWrite(
      {.type = 8, .keys = {{"key:UPDT_NBR", "1"}}, .records = {{"Customer", {row}}}}, given, [&](bool saved) {
        const auto left =
            Stored(std::string("CUST_BSNS_NM, MAIL_ADDR_1, UPDT_NBR, (SELECT COUNT(*) FROM customer_change),"
                               " (SELECT PRNT_STTS_CD FROM letter_history), ") +
                   kLogged + " FROM customer WHERE CUST_ID = '100016'");
        if (left == "Broken Oar Marine Fuels|Pier 0|1|0|V|0|") {
          EXPECT_EQ(Found("broken oar"), 1U);
          EXPECT_EQ(Found("whole oar"), 0U);
          EXPECT_FALSE(saved);
        } else {
          EXPECT_THAT(left, testing::MatchesRegex("Whole Oar Fuels\\|1 A ST\\|2\\|[1-9]+\\|W\\|1\\|"));
          EXPECT_EQ(Found("whole oar"), 1U);
        }
      });
}

// What was killed is asked again by the same message, as a user's window does.
TEST_F(KilledChange, OfLettersIsThereWholeOrNotAtAllAndOnceWhenItIsAskedAgain) {
  struct Case {
    tests::Question change;
    std::string state;
    std::string before;
    std::string after;
  };
  const Case cases[] = {
      {Returned(1, "m-1"),
       "MAIL_BAD_FLG, UPDT_NBR, (SELECT COUNT(*) FROM customer_change), (SELECT COUNT(*) FROM "
       "returned_mail), " +
           std::string(kLogged) + " FROM customer WHERE CUST_ID = '100001'",
       "N|1|0|0|0|", "Y|2|1|1|1|"},
      {GiveToRun(1, 20, "m-1"),
       "COUNT(*), COUNT(BTCH_ACTN_CD), (SELECT COUNT(*) FROM batch_item), " + std::string(kLogged) +
           " FROM letter_history WHERE PRNT_STTS_CD = CASE WHEN BTCH_ACTN_CD IS NULL THEN 'P' ELSE 'W' END",
       "20|0|0|0|", "20|20|20|1|"},
  };
  for (const auto& one : cases) {
    KillAtEachWrite(
        one.change, [&] { Execute(Letters(20)); },
        [&](bool over) {
          const auto left = Stored(one.state);
          EXPECT_EQ(left, over || left != one.before ? one.after : one.before);
          EXPECT_EQ(AskAnother(one.change).error, "");
          EXPECT_EQ(Stored(one.state), one.after);
        });
  }
}

TEST_F(KilledChange, AtRandomMomentsLosesAndDoublesNoLetter) {
  constexpr int kKills = 200;
  Execute(Letters(kKills));
  std::mt19937 random(1);
  int killed = 0;
  for (int kill = 1; kill <= kKills; ++kill) {
    const auto key = "m-" + std::to_string(kill);
    // Each letter comes back once; ten of them are given to the run every tenth time.
    const auto change = kill % 10 == 0 ? GiveToRun(kill - 9, 10, key + "-items") : Returned(kill, key);
    const auto child = AskInProcess(change, [] {});
    usleep(static_cast<useconds_t>(random() % 4'000));
    ::kill(child, SIGKILL);
    if (!WasOver(child)) ++killed;
    ASSERT_EQ(AskAnother(change).error, "");
  }
  EXPECT_GT(killed, 0);
  EXPECT_EQ(Stored("(SELECT COUNT(*) FROM returned_mail), (SELECT COUNT(*) FROM batch_item), "
                   "(SELECT COUNT(*) FROM customer_change), (SELECT SUM(UPDT_NBR - 1) FROM customer), " +
                   std::string(kLogged)),
            "180|200|18|18|200|");
}

}  // namespace
