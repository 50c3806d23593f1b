#include <csignal>
#include <cstddef>

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

/// A save that changes a customer, its search words, its history and a letter.
class KilledSave : public tests::ServerTest {
 protected:
  tests::Question Save() const {
    const fakes::Row row = {
        {"CUST_ID", "100016"},     {"ACTION", "UPDF"},      {"CUST_BSNS_NM", "Whole Oar Fuels"},
        {"MAIL_ADDR_1", "1 A St"}, {"MAIL_ADDR_2", ""},     {"MAIL_CITY", "Hartsfield"},
        {"MAIL_ST", "KV"},         {"MAIL_ZIP_CD", "88312"}};
    return {
        .type = 8, .keys = {{"key:UPDT_NBR", "1"}}, .records = {{"Customer", {row}}}, .message_key = "m-1"};
  }
  /// Whether the save was over before the deadly write came.
  bool SavesUnlessKilledAt(int write, deadly::Way way) {
    const auto child = fork();
    if (child == 0) {
      deadly::KillAtWrite(write, way);
      const auto reply = Ask(Save());
      _exit(reply.error.empty() ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status) || WEXITSTATUS(status) == 0) << "the save was refused";
    return !WIFSIGNALED(status);
  }
  /// Everything that the save touches, in one text.
  std::string Register() const {
    server::Database database(server::DatabaseFile(folder_.path()), server::Database::Opening::kExisting);
    return database
        .Select(R"(SELECT CUST_BSNS_NM || '|' || MAIL_ADDR_1 || '|' || UPDT_NBR || '|' ||
                     (SELECT COUNT(*) FROM customer_change) || '|' ||
                     (SELECT PRNT_STTS_CD FROM letter_history) || '|' ||
                     (SELECT COUNT(*) FROM request_log) AS TEXT FROM customer WHERE CUST_ID = '100016')")
        ->FirstText();
  }
  std::size_t Found(const std::string& text) {
    fakes::FakeVerifier verifier;
    server::RequestProcessor processor(folder_.path(), {clock_, rights_, verifier});
    const auto reply = server::ReadReply(processor.Answer(
        tests::WireText({.type = 7, .key_items = {platform::Criterion("key:CUST_FIND", text, "like")}})));
    const auto* rows = tests::Record(reply, "CUSTOMER");
    return rows == nullptr ? 0 : rows->RecordCount();
  }
  void GivenTheDataAnew() {
    std::filesystem::remove_all(folder_ / "server");
    tests::PrepareData(folder_.path());
    server::Database database(server::DatabaseFile(folder_.path()), server::Database::Opening::kExisting);
    database.Change(
        "INSERT INTO letter_history (LTR_TYP_ID, CUST_ID, PRNT_STTS_CD) VALUES ('101', '100016', 'V')");
  }
};

TEST_F(KilledSave, LeavesTheRegisterAsBeforeOrAsAfter) {
  constexpr auto kBefore = "Broken Oar Marine Fuels|Pier 0|1|0|V|0";
  for (const auto way : {deadly::Way::kBefore, deadly::Way::kHalfWay}) {
    int killed = 0;
    for (int write = 1;; ++write) {
      SCOPED_TRACE(write);
      GivenTheDataAnew();
      const bool saved = SavesUnlessKilledAt(write, way);
      const auto left = Register();
      if (left == kBefore) {
        EXPECT_EQ(Found("broken oar"), 1U);
        EXPECT_EQ(Found("whole oar"), 0U);
        EXPECT_FALSE(saved);
      } else {
        EXPECT_THAT(left, testing::MatchesRegex("Whole Oar Fuels\\|1 A ST\\|2\\|[1-9]+\\|W\\|1"));
        EXPECT_EQ(Found("whole oar"), 1U);
      }
      if (saved || HasFailure()) break;
      ++killed;
    }
    EXPECT_GT(killed, 3) << "nothing was written";
  }
}

}  // namespace
