#include "platform/file_access.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "platform/descriptor.h"
#include "platform/file_failure.h"
#include "platform/whole_file.h"
#include "tests/support/failing.h"
#include "tests/support/temporary_folder.h"

namespace platform {
namespace {

constexpr uid_t kClerk = 54321;  // need not exist
constexpr mode_t kBits = 07777;

struct stat Known(const std::filesystem::path& file) {
  struct stat known = {};
  EXPECT_EQ(stat(file.c_str(), &known), 0) << file;
  return known;
}

/// What is made under the widest umask and the narrowest.
class FileAccess : public testing::TestWithParam<mode_t> {
 protected:
  FileAccess() : umask_(umask(GetParam())) {}
  ~FileAccess() override { umask(umask_); }

  static void MakeFile(const std::filesystem::path& file) {
    const int made = OpenNewFile(file);
    EXPECT_GE(made, 0);
    EXPECT_NE(fcntl(made, F_GETFD) & FD_CLOEXEC, 0);
    close(made);
  }
  void Share() const { chmod(folder_.path().c_str(), 02770); }

  const tests::TemporaryFolder folder_;

 private:
  const mode_t umask_;
};
INSTANTIATE_TEST_SUITE_P(Umask, FileAccess, testing::Values(0, 077));

TEST_P(FileAccess, IsTheOwnersAlone) {
  MakeFile(folder_ / "letter.pdf");
  MakeFolder(folder_ / "a/b");
  EXPECT_EQ(Known(folder_ / "letter.pdf").st_mode & kBits, 0600U);
  EXPECT_EQ(Known(folder_ / "a").st_mode & kBits, 0700U);
  EXPECT_EQ(Known(folder_ / "a/b").st_mode & kBits, 0700U);
}

TEST_P(FileAccess, IsTheGroupsTooInAFolderThatIsShared) {
  Share();
  MakeFile(folder_ / "letter.pdf");
  MakeFolder(folder_ / "a/b/");
  MakeFile(folder_ / "a/b/note");
  EXPECT_EQ(Known(folder_ / "letter.pdf").st_mode & kBits, 0660U);
  EXPECT_EQ(Known(folder_ / "a/b").st_mode & kBits, 02770U);
  EXPECT_EQ(Known(folder_ / "a/b/note").st_mode & kBits, 0660U);
  EXPECT_TRUE(IsShared(folder_ / "a/b"));
}

TEST_P(FileAccess, OfWhatALibraryMadeBecomesTheSame) {
  tests::WriteFile(folder_ / "server.db", "");
  chmod((folder_ / "server.db").c_str(), 0644);
  Protect(folder_ / "server.db");
  EXPECT_EQ(Known(folder_ / "server.db").st_mode & kBits, 0600U);
  Protect(folder_ / "missing");

  tests::WriteFile(folder_ / "elsewhere", "");
  chmod((folder_ / "elsewhere").c_str(), 0644);
  std::filesystem::create_symlink("elsewhere", folder_ / "link");
  Protect(folder_ / "link");
  EXPECT_EQ(Known(folder_ / "elsewhere").st_mode & kBits, 0644U) << "a link's target was meant";
}

TEST_P(FileAccess, OfWhatRootMakesIsTheFoldersOwners) {
  if (geteuid() != 0) GTEST_SKIP() << "needs root";
  chmod(folder_.path().c_str(), 0700);
  ASSERT_EQ(chown(folder_.path().c_str(), kClerk, kClerk), 0);
  MakeFile(folder_ / "note");
  MakeFolder(folder_ / "unrecorded");
  EXPECT_EQ(Known(folder_ / "note").st_uid, kClerk);
  EXPECT_EQ(Known(folder_ / "note").st_gid, kClerk);
  EXPECT_EQ(Known(folder_ / "unrecorded").st_uid, kClerk);
}

TEST(WholeFile, IsWrittenIntoAPipeThatStaysOne) {
  const tests::TemporaryFolder folder;
  const auto pipe = folder / "pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  const Descriptor reader(open(pipe.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  const auto link = folder / "link";
  std::filesystem::create_symlink(pipe, link);
  WriteWholeFile(pipe, "a");
  ReplaceFile(link, "b");
  WriteScratchFile(folder / "file", "c");
  MoveWholeFile(folder / "file", pipe);
  std::array<char, 8> read_back{};
  EXPECT_EQ(read(reader.number(), read_back.data(), read_back.size()), 3);
  EXPECT_STREQ(read_back.data(), "abc");
  EXPECT_TRUE(std::filesystem::is_fifo(pipe));
  EXPECT_TRUE(std::filesystem::is_symlink(link));
}

TEST(FileFailure, CallsAFullDiskFullAndSaysWhatToDo) {
  const auto full = FileFailure("could not be written", "/srv/printed/a.pdf", ENOSPC).description();
  EXPECT_THAT(full, testing::HasSubstr("\"a.pdf\" in the folder \"/srv/printed\""));
  EXPECT_THAT(full, testing::HasSubstr("the disk is full"));
  EXPECT_THAT(full, testing::HasSubstr("Free some space"));
  EXPECT_EQ(FileFailure("could not be written", "a", EACCES).kind(), Failure::Kind::kPermissionDenied);
}

TEST(MakeFolder, NamesAFileThatStandsInItsPlace) {
  const tests::TemporaryFolder folder;
  tests::WriteFile(folder / "taken", "");
  for (const auto* path : {"taken", "taken/printed"}) {
    EXPECT_THAT([&] { MakeFolder(folder / path); }, tests::FailsSaying(testing::HasSubstr("taken")));
  }
}

}  // namespace
}  // namespace platform
