#include "host/print_journal.h"

#include <gmock/gmock.h>

#include <memory>

#include <sys/stat.h>
#include <unistd.h>

#include "platform/failure.h"
#include "tests/fakes/recording_errors.h"
#include "tests/support/failing.h"
#include "tests/support/temporary_folder.h"

namespace host {
namespace {

using platform::Failure;
using platform::PrintNote;
using platform::PrintStage;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Outcome = platform::PrintJournal::Outcome;

/// This process as another user, for as long as it lives.
class AnotherUser {
 public:
  static constexpr uid_t kNumber = 54321;  // has no name
  AnotherUser() { EXPECT_EQ(seteuid(kNumber), 0); }
  AnotherUser(const AnotherUser&) = delete;
  AnotherUser& operator=(const AnotherUser&) = delete;
  ~AnotherUser() { EXPECT_EQ(seteuid(0), 0); }
};

/// Programs on one data folder: each has a journal, and ends with it.
class PrintJournalTest : public testing::Test {
 protected:
  std::unique_ptr<PrintJournal> Program() {
    return std::make_unique<PrintJournal>(data_ / "unrecorded", errors_);
  }
  static PrintNote Note(const std::string& key) {
    return {"\"a & b.docx\"", key, {{"ACTION", "ADD"}, {"XML_CONTEXT", "<X a=\"1\">\r\n&amp; ü</X>"}}};
  }
  static void Prints(PrintJournal& journal, const std::string& key) {
    journal.Expect([key](const std::string&) { return Note(key); });
    journal.Begin("");
  }
  std::vector<std::string> Files() const {
    const auto notes = data_ / "unrecorded";
    return std::filesystem::exists(notes) ? tests::NamesIn(notes) : std::vector<std::string>();
  }

  const tests::TemporaryFolder data_;
  fakes::RecordingErrors errors_;
};

TEST_F(PrintJournalTest, HasANoteOnTheDiskFromTheHandOverUntilTheRecord) {
  const auto program = Program();
  Prints(*program, "K1");
  EXPECT_THAT(Files(), ElementsAre("K1.handing-over"));
  program->Accept();
  EXPECT_THAT(Files(), ElementsAre("K1.printed"));
  EXPECT_EQ(program->Record(), "K1");
  EXPECT_THAT(Files(), ElementsAre("K1.recording"));
  EXPECT_THAT(program->Recording(), ElementsAre("K1"));
  program->Settle("K1", Outcome::kRecorded);
  EXPECT_THAT(Files(), IsEmpty());
  EXPECT_THAT(program->Recording(), IsEmpty());
}

TEST_F(PrintJournalTest, LeavesTheLetterToTheNextProgramWhereverItEnds) {
  struct Case {
    std::function<void(PrintJournal&)> steps;
    PrintStage stage;
  };
  const Case cases[] = {
      {[](auto&) {}, PrintStage::kHandingOver},
      {[](auto& journal) { journal.Accept(); }, PrintStage::kPrinted},
      {[](auto& journal) {
         journal.Accept();
         journal.Record();
       },
       PrintStage::kRecording},
      {[](auto& journal) {
         journal.Accept();
         journal.Settle(journal.Record(), Outcome::kRefused);
       },
       PrintStage::kPrinted},
      {[](auto& journal) {
         journal.Accept();
         journal.Settle(journal.Record(), Outcome::kUnanswered);
       },
       PrintStage::kRecording},
      {[](auto& journal) {
         journal.Accept();
         Prints(journal, "K2");  // the next letter, while this one was never recorded
         journal.Abandon();
       },
       PrintStage::kPrinted},
  };
  for (const auto& [steps, stage] : cases) {
    auto program = Program();
    Prints(*program, "K1");
    steps(*program);
    EXPECT_THAT(Program()->LeftBehind(), IsEmpty()) << "offered while its program runs";
    program.reset();

    const auto next = Program();
    const auto left = next->LeftBehind();
    ASSERT_THAT(left, SizeIs(1));
    EXPECT_EQ(left[0].note, Note("K1"));
    EXPECT_EQ(left[0].stage, stage);
    EXPECT_THAT(Program()->LeftBehind(), IsEmpty()) << "offered by two programs";
    next->RecordAgain("K1");
    next->Settle("K1", Outcome::kRecorded);
    EXPECT_THAT(Files(), IsEmpty());
  }
}

TEST_F(PrintJournalTest, LeavesNothingOfALetterThatWasNotTaken) {
  const auto program = Program();
  Prints(*program, "K1");
  program->Abandon();
  EXPECT_THAT(Files(), IsEmpty());
  EXPECT_EQ(program->Record(), "");

  program->Expect([](const std::string&) { return std::nullopt; });
  program->Begin("");
  program->Accept();
  EXPECT_EQ(program->Record(), "");
  EXPECT_THAT(Files(), IsEmpty());
}

TEST_F(PrintJournalTest, GivesTheKeyOfANoteThatCannotBeBroughtOn) {
  const auto program = Program();
  Prints(*program, "K1");
  program->Accept();
  std::filesystem::remove(data_ / "unrecorded" / "K1.printed");
  EXPECT_EQ(program->Record(), "K1") << "under another key it could be stored twice";
  EXPECT_THAT(errors_.Procedures(), ElementsAre("PrintJournal.Record"));
}

TEST_F(PrintJournalTest, KeepsWhatTheUserPutsOffAndForgetsTheRest) {
  for (const auto* key : {"K1", "K2"}) {
    const auto program = Program();
    Prints(*program, key);
    program->Accept();
  }
  auto next = Program();
  EXPECT_THAT(next->LeftBehind(), SizeIs(2));
  next->Forget("K1");
  next->LeaveForNextStart("K2");
  EXPECT_THAT(Program()->LeftBehind(), IsEmpty());
  next.reset();
  EXPECT_THAT(Files(), ElementsAre("K2.printed"));
  EXPECT_THAT(Program()->LeftBehind(), SizeIs(1));
}

TEST_F(PrintJournalTest, ReportsAFileThatIsNoNoteAndOffersTheOthers) {
  {
    const auto program = Program();
    Prints(*program, "K1");
  }
  tests::WriteFile(data_ / "unrecorded/K0.printed", "<letter");
  tests::WriteFile(data_ / "unrecorded/notes.txt", "mine");
  EXPECT_THAT(Program()->LeftBehind(), SizeIs(1));
  EXPECT_THAT(errors_.Procedures(), ElementsAre("PrintJournal.LeftBehind"));
  EXPECT_THAT(Files(), SizeIs(3));
}

// The program waited for good for a named pipe's writer, and nothing could be printed any more.
TEST_F(PrintJournalTest, ReportsWhatIsNoFileWithoutWaitingForIt) {
  {
    const auto program = Program();
    Prints(*program, "K1");
  }
  const auto notes = data_ / "unrecorded";
  ASSERT_EQ(mknod((notes / "K2.printed").c_str(), S_IFIFO | 0600, 0), 0);
  ASSERT_EQ(mknod((notes / "K3.recording").c_str(), S_IFSOCK | 0600, 0), 0);
  std::filesystem::create_directory(notes / "K4.printed");
  std::filesystem::create_symlink("/dev/zero", notes / "K5.handing-over");
  alarm(60);  // ends a test that waits
  EXPECT_THAT(Program()->LeftBehind(), SizeIs(1));
  alarm(0);
  EXPECT_THAT(errors_.Procedures(), SizeIs(4));
  for (const auto& report : errors_.reports)
    EXPECT_THAT(report.description, testing::HasSubstr("is no file"));
  EXPECT_THAT(Files(), SizeIs(5));
}

TEST_F(PrintJournalTest, IsNotStoppedByAnotherUsersNotesAndSaysWhoseTheyAre) {
  if (geteuid() != 0) GTEST_SKIP() << "needs root, to be two users";
  std::filesystem::permissions(data_.path(), std::filesystem::perms(0755));
  for (const auto* key : {"K1", "K2"}) Prints(*Program(), key);
  const auto notes = data_ / "unrecorded";
  std::filesystem::permissions(notes, std::filesystem::perms(0777));
  {
    const AnotherUser ben;
    Prints(*Program(), "K3");  // his own note
    const auto program = Program();
    const auto left = program->LeftBehind();
    ASSERT_THAT(left, SizeIs(1));
    EXPECT_EQ(left[0].note.message_key, "K3");
    EXPECT_EQ(left[0].user, "");
    ASSERT_THAT(program->ClosedNotes(), SizeIs(1));
    EXPECT_EQ(program->ClosedNotes()[0].user, "root");
    EXPECT_EQ(program->ClosedNotes()[0].letters, 2U);
  }
  const auto all = Program()->LeftBehind();
  ASSERT_THAT(all, SizeIs(3));
  EXPECT_EQ(all[2].user, std::to_string(AnotherUser::kNumber));

  std::filesystem::permissions(notes, std::filesystem::perms(0700));
  const AnotherUser ben;
  const auto program = Program();
  EXPECT_THAT(program->LeftBehind(), IsEmpty());
  EXPECT_EQ(program->ClosedNotes()[0].letters, 0U);
  EXPECT_THAT(errors_.Procedures(), IsEmpty());
  EXPECT_THAT([&] { Prints(*program, "K4"); },
              tests::FailsSaying(testing::HasSubstr("The folder belongs to user \"root\"")));
}

TEST_F(PrintJournalTest, RefusesToPrintWhereTheNoteCannotBeWritten) {
  tests::WriteFile(data_ / "unrecorded", "a file where the folder should be");
  const auto program = Program();
  EXPECT_THROW(Prints(*program, "K1"), Failure);
  EXPECT_EQ(program->Record(), "");
}

}  // namespace
}  // namespace host
