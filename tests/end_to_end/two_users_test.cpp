#include <gmock/gmock.h>

#include <sys/stat.h>
#include <unistd.h>

#include <utility>

#include "tests/end_to_end/program.h"

namespace tests {
namespace {

using testing::IsEmpty;

constexpr auto kAnna = "--reuid=54321 --regid=54321";
constexpr auto kBen = "--reuid=54322 --regid=54322";
constexpr auto kGroup = "users";  // every Debian has it, with number 100

/// Two accounts without names, members of one group, on one data folder.
class TwoUsers : public testing::Test {
 protected:
  void SetUp() override {
    if (geteuid() != 0) GTEST_SKIP() << "needs root, to be two users";
    chmod(data_.path().c_str(), 0755);
    if (As(kAnna, "--help").status != 0) GTEST_SKIP() << "other users may not run what was built here";
  }
  static Outcome As(const std::string& user, const std::string& words) {
    return RunShell("umask 0; setpriv --groups=100 " + user + " env -i PATH=/usr/bin:/bin " +
                    Quoted(std::string(ZEMLO_BINARY_DIR) + "/bin/zemlo-letters") + " " + words);
  }
  std::string Folder() const { return " --data " + Quoted((data_ / "office").string()); }
  Outcome Prints(const std::string& user, const std::string& customer) {
    return As(user, "letter --type 101 --print --customer " + customer + Folder());
  }
  /// The names of what has other rights.
  std::string RightsOtherThan(const std::string& folders, const std::string& files) {
    return RunShell("cd " + Quoted((data_ / "office").string()) + "; find . -type d ! -perm " + folders +
                    " -o -type f ! -perm " + files)
        .out;
  }

  const TemporaryFolder data_;
};

TEST_F(TwoUsers, ShareAFolderThatInitGaveTheirGroup) {
  ASSERT_EQ(RunLetters({"init", "--demo", "--data", (data_ / "office").string(), "--letters", "0", "--group",
                        kGroup})
                .status,
            0);
  for (const auto* user : {kAnna, kBen, kAnna}) {
    const auto letter = Prints(user, "100001");
    EXPECT_EQ(letter.status, 0) << letter.err;
    EXPECT_EQ(As(user, "history --customer 100001" + Folder()).status, 0);
  }
  EXPECT_THAT(FilesIn(data_ / "office/unrecorded"), IsEmpty());
  EXPECT_EQ(RightsOtherThan("2770", "660"), "");
  // Errors of both are logged.
  WriteFile(data_ / "office/settings.ini", "[User]\nRegion=K1\n[Folders]\nPrinted=/proc/no-such-place\n");
  for (std::size_t size = 0; const auto* user : {kAnna, kBen}) {
    EXPECT_EQ(Prints(user, "100001").status, 1);
    const auto log = ReadFile(data_ / "office/error.log");
    EXPECT_GT(log.size(), std::exchange(size, log.size())) << user;
  }
  EXPECT_EQ(RunLetters({"init", "--data", (data_ / "office").string(), "--group", "no-such-group"}).status,
            1);
}

TEST_F(TwoUsers, KeepTheirLettersToThemselvesUnlessTold) {
  chmod(data_.path().c_str(), 0777);
  ASSERT_EQ(As(kAnna, "init --demo --letters 0" + Folder()).status, 0);
  ASSERT_EQ(Prints(kAnna, "100001").status, 0);
  EXPECT_EQ(RightsOtherThan("700", "600"), "");
  EXPECT_NE(As(kBen, "customers" + Folder()).status, 0);
}

TEST_F(TwoUsers, AreNotStoppedByWhatRootDidInBetween) {
  chmod(data_.path().c_str(), 0777);
  ASSERT_EQ(As(kAnna, "init --demo --letters 0" + Folder()).status, 0);
  const auto trigger =
      "CREATE TRIGGER full BEFORE INSERT ON letter_history BEGIN SELECT RAISE(FAIL, 'no'); END";
  const auto sql = [&](const std::string& statement) {
    return RunShell("setpriv --clear-groups " + std::string(kAnna) + " sqlite3 " +
                    Quoted((data_ / "office/server/server.db").string()) + " " + Quoted(statement));
  };
  ASSERT_EQ(sql(trigger).status, 0);
  ASSERT_EQ(RunLetters({"letter", "--data", (data_ / "office").string(), "--type", "101", "--customer",
                        "100001", "--print"})
                .status,
            4);
  ASSERT_EQ(sql("DROP TRIGGER full").status, 0);
  const auto letter = Prints(kAnna, "100002");
  EXPECT_EQ(letter.status, 0) << letter.err;
  EXPECT_EQ(As(kAnna, "unrecorded --record" + Folder()).status, 0);
  EXPECT_THAT(FilesIn(data_ / "office/unrecorded"), IsEmpty());
}

}  // namespace
}  // namespace tests
