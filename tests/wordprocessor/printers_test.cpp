#include "wordprocessor/printing/printers.h"
#include "tests/support/temporary_folder.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <set>
#include <string>
#include <vector>

#include "platform/failure.h"
#include "platform/whole_file.h"
#include "tests/fakes/manual_clock.h"
#include "tests/support/failing.h"
#include "tests/wordprocessor/fake_queues.h"

namespace wordprocessor {
namespace {

using platform::Failure;
using testing::AllOf;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;

class PrintersTest : public testing::Test {
 protected:
  PrintersTest() { platform::WriteScratchFile(pdf_, std::string(64 * 1024, 'p')); }

  std::string Print(const std::string& printer, const std::string& letter = "CTL110_2407.DOCX") {
    return printers_.Print({.printer = printer}, pdf_, letter);
  }
  /// How printing into the folder fails.
  Failure Refusal() {
    try {
      Print("PDF folder");
    } catch (const Failure& failure) {
      return failure;
    }
    return {Failure::Kind::kInternal, "it was printed"};
  }
  std::vector<std::string> Printed() const { return tests::NamesIn(printed_); }

  tests::TemporaryFolder folder_;
  const std::filesystem::path pdf_ = folder_ / "letter.pdf";
  const std::filesystem::path printed_ = folder_ / "Printed letters";
  FakeQueues queues_;
  fakes::ManualClock clock_;
  Printers printers_{queues_, printed_, clock_};
};

TEST_F(PrintersTest, OffersTheQueuesAndTheFolderWhichIsTheDefaultWithoutAQueue) {
  const platform::OfferedPrinter folder = {"PDF folder", /*takes_options=*/false};
  EXPECT_THAT(printers_.Offered(), ElementsAre(folder));
  EXPECT_EQ(printers_.Default(), "PDF folder");
  queues_.names = {"laser", "second floor"};
  using Offered = platform::OfferedPrinter;
  EXPECT_THAT(printers_.Offered(), ElementsAre(Offered{"laser"}, Offered{"second floor"}, folder));
  EXPECT_EQ(printers_.Default(), "laser");
}

TEST_F(PrintersTest, HandsALetterToItsQueue) {
  queues_.names = {"laser"};
  EXPECT_EQ(Print("laser"), "laser, job 1");
  EXPECT_THAT(queues_.printed, ElementsAre("laser: CTL110_2407.DOCX"));
}

TEST_F(PrintersTest, FilesLettersUnderDateTimeTemplateAndARunningNumber) {
  const auto first = Print("PDF folder");
  EXPECT_EQ(first, (printed_ / "2004-03-15 09.00.00 CTL110_2407 1.pdf").string());
  EXPECT_EQ(platform::ReadWholeFile(first), platform::ReadWholeFile(pdf_));
  Print("PDF folder");
  Print("PDF folder", std::string(200, 'N') + ".docx");
  Print("PDF folder", "..\\..\\elsewhere\\odd.docx");
  EXPECT_THAT(
      Printed(),
      ElementsAre("2004-03-15 09.00.00 CTL110_2407 1.pdf", "2004-03-15 09.00.00 CTL110_2407 2.pdf",
                  "2004-03-15 09.00.00 " + std::string(50, 'N') + " 1.pdf", "2004-03-15 09.00.00 odd 1.pdf"));
}

TEST_F(PrintersTest, FilesALetterWholeAndOnceOrSaysThatItDoesNot) {
  for (const auto& choice : {platform::PrintChoice{.printer = "PDF folder", .copies = 2},
                             platform::PrintChoice{.printer = "PDF folder", .pages = "1-2"}}) {
    EXPECT_THAT([&] { printers_.Print(choice, pdf_, "CTL110.docx"); },
                tests::Fails(Failure::Kind::kRefused, HasSubstr("Choose a printer")));
  }
  EXPECT_FALSE(std::filesystem::exists(printed_));
}

TEST_F(PrintersTest, LosesNoLetterWhereSeveralProgramsPrintAtTheSameMoment) {
  constexpr int kPrograms = 3;
  constexpr int kLetters = 20;
  for (int program = 0; program < kPrograms; ++program) {
    if (fork() != 0) continue;
    for (int letter = 0; letter < kLetters; ++letter) {
      const Printers starting(queues_, printed_, clock_);  // clears up what others seem to have left
      Print("PDF folder");
    }
    _exit(0);
  }
  for (int program = 0; program < kPrograms; ++program) {
    int status = -1;
    wait(&status);
    EXPECT_EQ(status, 0);
  }
  EXPECT_EQ(Printed().size(), static_cast<std::size_t>(kPrograms * kLetters));
}

TEST_F(PrintersTest, RemovesWhatAProgramThatWasKilledLeftAndNothingElse) {
  std::filesystem::create_directory(printed_);
  const std::vector<std::string> others = {".zemlo-2-7.part", "2004-03-15 letter.pdf", "notes.part"};
  tests::WriteFile(printed_ / ".zemlo-1-1.part", "half a let");
  for (const auto& name : others) tests::WriteFile(printed_ / name, "theirs");
  const int in_use = open((printed_ / others[0]).c_str(), O_RDWR);
  ASSERT_EQ(flock(in_use, LOCK_EX), 0);
  const Printers next(queues_, printed_, clock_);
  EXPECT_THAT(Printed(), ElementsAreArray(others));
  close(in_use);
}

TEST_F(PrintersTest, LettersAreForTheirOwnerAlone) {
  const auto before = umask(0);
  const auto letter = Print("PDF folder");
  platform::WriteWholeFile(folder_ / "saved.pdf", "letter");
  platform::ReplaceFile(folder_ / "merged.docx", "letter");
  umask(before);
  for (const auto& file : {std::filesystem::path(letter), folder_ / "saved.pdf", folder_ / "merged.docx"}) {
    EXPECT_EQ(std::filesystem::status(file).permissions(), std::filesystem::perms(0600)) << file;
  }
  EXPECT_EQ(std::filesystem::status(printed_).permissions(), std::filesystem::perms(0700));
}

/// Files of this program stop growing where a full disk would stop them.
class FullDisk {
 public:
  FullDisk() {
    signal(SIGXFSZ, SIG_IGN);
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit small = {16 * 1024, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
  }
  ~FullDisk() { setrlimit(RLIMIT_FSIZE, &before_); }

 private:
  rlimit before_ = {};
};

TEST_F(PrintersTest, NamesAFolderThatIsFullAndLeavesNothingHalfWritten) {
  const FullDisk full;
  const auto refusal = Refusal();
  EXPECT_EQ(refusal.kind(), Failure::Kind::kUnavailable);
  EXPECT_THAT(refusal.description(), AllOf(HasSubstr(printed_.string()), HasSubstr("Free some space there")));
  EXPECT_THAT(Printed(), IsEmpty());
}

TEST_F(PrintersTest, NamesAFolderThatMayNotBeWritten) {
  std::filesystem::create_directory(printed_);
  std::filesystem::permissions(printed_, std::filesystem::perms(0555));
  std::filesystem::permissions(folder_.path(), std::filesystem::perms(0755));
  std::filesystem::permissions(pdf_, std::filesystem::perms(0644));
  const auto user = geteuid();
  constexpr uid_t kNobody = 65534;
  if (user == 0 && seteuid(kNobody) != 0) GTEST_SKIP() << "permissions do not stop this user";
  const auto refusal = Refusal();
  ASSERT_EQ(seteuid(user), 0);
  EXPECT_EQ(refusal.kind(), Failure::Kind::kPermissionDenied);
  EXPECT_THAT(refusal.description(), AllOf(HasSubstr(printed_.string()), HasSubstr("Choose another folder")));
  EXPECT_THAT(Printed(), IsEmpty());
}

TEST_F(PrintersTest, SaysWhatTheSpoolerSays) {
  setenv("CUPS_SERVER", "127.0.0.1:9", 1);
  CupsQueues queues;
  EXPECT_THAT(queues.Names(), IsEmpty());
  EXPECT_EQ(queues.Default(), "");
  EXPECT_THAT(
      [&] { queues.Print({.printer = "laser"}, pdf_, "CTL110.docx"); },
      tests::Fails(Failure::Kind::kUnavailable, AllOf(HasSubstr("\"laser\""), HasSubstr("\"CTL110.docx\""))));
  unsetenv("CUPS_SERVER");
}

}  // namespace
}  // namespace wordprocessor
