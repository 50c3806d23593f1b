#include "tests/support/patience.h"
#include "tests/support/temporary_folder.h"
#include "wordprocessor/layout/pool.h"

#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <string>
#include <vector>

#include "platform/whole_file.h"
#include "tests/support/failing.h"

namespace wordprocessor {
namespace {

using platform::Failure;
using std::chrono::milliseconds;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

const std::filesystem::path kFakeWorker = std::filesystem::path(ZEMLO_BINARY_DIR) / "bin/zemlo-fake-worker";

/// A pool whose processes behave as badly as the document in their hands says.
class LayoutPoolTest : public testing::Test {
 protected:
  LayoutSettings Settings(const std::filesystem::path& program = kFakeWorker) {
    LayoutSettings settings;
    settings.worker_program = program;
    settings.work_folder = folder_ / "work";
    return settings;
  }

  std::future<void> Start(LayoutPool& pool, const std::string& document,
                          const std::string& name = "LETTER.docx") {
    pdf_ = folder_ / (std::to_string(++letters_) + ".pdf");
    return pool.Layout(name, document, pdf_);
  }
  /// The pages, or what went wrong.
  std::string LaidOut(LayoutPool& pool, const std::string& document,
                      const std::string& name = "LETTER.docx") {
    try {
      Start(pool, document, name).get();
      return platform::ReadWholeFile(pdf_);
    } catch (const Failure& failure) {
      EXPECT_FALSE(std::filesystem::exists(pdf_)) << document;
      return failure.description();
    }
  }
  /// The same program coming up in another way.
  std::filesystem::path ProgramThatIs(const std::string& behaviour) {
    const auto program = folder_ / behaviour;
    std::filesystem::create_symlink(kFakeWorker, program);
    return program;
  }

  tests::TemporaryFolder folder_;
  std::filesystem::path pdf_;
  int letters_ = 0;
};

TEST_F(LayoutPoolTest, KeepsOneProcessWarmAndLeavesNothingBehind) {
  {
    LayoutPool pool(Settings());
    EXPECT_FALSE(std::filesystem::exists(folder_ / "work")) << "started before anybody asked";
    const auto first = LaidOut(pool, "letter");
    EXPECT_THAT(first, StartsWith("pages by "));
    EXPECT_EQ(LaidOut(pool, "letter"), first);
  }
  EXPECT_TRUE(std::filesystem::is_empty(folder_ / "work"));
  EXPECT_EQ(std::filesystem::status(pdf_).permissions(), std::filesystem::perms(0600));
  EXPECT_EQ(folder_.Names(), (std::vector<std::string>{"1.pdf", "2.pdf", "work"}));
}

struct BadDocument {
  const char* content;
  Failure::Kind kind;
  const char* message;
};

class BadDocuments : public LayoutPoolTest, public testing::WithParamInterface<BadDocument> {};

TEST_P(BadDocuments, CostThemselvesAFailureAndNobodyElseAnything) {
  auto settings = Settings();
  if (GetParam().kind == Failure::Kind::kTimedOut) settings.document_time = milliseconds(700);
  settings.stop_above_bytes = 100 * 1024 * 1024;
  LayoutPool pool(settings);
  auto before = Start(pool, "letter");
  auto bad = Start(pool, GetParam().content, "ODD.docx");
  auto behind = Start(pool, "letter");
  auto later = Start(pool, "letter");
  EXPECT_NO_THROW(before.get());
  EXPECT_THAT([&] { bad.get(); },
              tests::Fails(GetParam().kind, AllOf(HasSubstr("\"ODD.docx\""), HasSubstr(GetParam().message))));
  EXPECT_NO_THROW(behind.get());
  EXPECT_NO_THROW(later.get());
}

INSTANTIATE_TEST_SUITE_P(
    LayoutPool, BadDocuments,
    testing::Values(BadDocument{"break", Failure::Kind::kDamaged, "broke off twice (signal 6)."},
                    BadDocument{"end", Failure::Kind::kDamaged, "broke off twice (exit status 3)."},
                    BadDocument{"hang", Failure::Kind::kTimedOut, "took longer than 1 seconds."},
                    BadDocument{"grow", Failure::Kind::kDamaged, "took more than 100 MB of memory."},
                    BadDocument{"nonsense", Failure::Kind::kInternal, "answered nonsense."},
                    BadDocument{"chatter", Failure::Kind::kDamaged, "broke off"},
                    BadDocument{"wrong number", Failure::Kind::kInternal, "answered what was not asked."},
                    BadDocument{"refuse", Failure::Kind::kDamaged, "The office says: too many pages."}),
    [](const auto& tested) {
      auto name = std::string(tested.param.content);
      std::erase(name, ' ');
      return name;
    });

// A process ended by itself twice among 700 letters, and never again for the same ones.
TEST_F(LayoutPoolTest, TriesALetterWhoseProcessBrokeOffOnceMoreInAFreshOne) {
  LayoutPool pool(Settings());
  const auto before = LaidOut(pool, "letter");
  auto behind = pool.Layout("NEXT.docx", "letter", folder_ / "next.pdf");
  const auto after = LaidOut(pool, "break once " + (folder_ / "broken").string());
  EXPECT_THAT(after, AllOf(StartsWith("pages by "), Not(before)));
  EXPECT_NO_THROW(behind.get());
}

TEST_F(LayoutPoolTest, GivesASecondTryUpWhenItCloses) {
  auto settings = Settings(ProgramThatIs("ready_once"));
  std::future<void> unfinished;
  {
    LayoutPool pool(settings);
    unfinished = Start(pool, "break once " + (folder_ / "broken").string());
    ASSERT_TRUE(tests::ComesTrue([this] { return std::filesystem::exists(folder_ / "ready_once.again"); },
                                 [] { usleep(1000); }));
  }
  EXPECT_THROW(unfinished.get(), Failure);
}

// Files of the program stop growing where a full disk would stop them; the office says something else.
TEST_F(LayoutPoolTest, NamesAFullDiskWhateverTheOfficeSays) {
  for (const auto* document : {"refuse", "break", "end"}) {
    LayoutPool pool(Settings());
    signal(SIGXFSZ, SIG_IGN);
    rlimit before = {};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit small = {64 * 1024, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    const auto refusal = LaidOut(pool, document);
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_THAT(refusal, HasSubstr("The disk of the folder \"" + (folder_ / "work").string() + "\" is full"));
  }
}

TEST_F(LayoutPoolTest, ReplacesAProcessThatHasGrownFatAfterItsDocument) {
  LayoutPool pool(Settings());
  const auto fat = LaidOut(pool, "fat");
  EXPECT_THAT(fat, StartsWith("pages by "));
  EXPECT_NE(LaidOut(pool, "letter"), fat);
}

TEST_F(LayoutPoolTest, DoesNotBlameADocumentForAProcessThatDiedWhileIdle) {
  LayoutPool pool(Settings());
  const auto pages = LaidOut(pool, "letter");
  const pid_t process = std::stoi(pages.substr(std::string("pages by ").size()));
  kill(process, SIGKILL);
  ASSERT_TRUE(tests::ComesTrue([&] { return kill(process, 0) != 0; }, [] { usleep(1000); }));
  const auto next = LaidOut(pool, "letter");
  EXPECT_THAT(next, AllOf(StartsWith("pages by "), Not(pages)));
}

TEST_F(LayoutPoolTest, SaysWhyNoProcessComesUpAndTriesAgainForTheNextLetter) {
  const struct {
    std::filesystem::path program;
    const char* message;
    milliseconds start_time = tests::kPatience;
  } cases[] = {
      {folder_ / "absent", "does not start: No such file or directory."},
      {ProgramThatIs("broken"), "No office is installed. Install one."},
      {ProgramThatIs("dead_on_arrival"), "broke off (exit status 9) before it was ready."},
      {ProgramThatIs("never_ready"), "did not come up in time.", milliseconds(300)},
  };
  for (const auto& [program, message, start_time] : cases) {
    auto settings = Settings(program);
    settings.start_time = start_time;
    LayoutPool pool(settings);
    EXPECT_THAT(LaidOut(pool, "letter", "A.docx"), AllOf(HasSubstr("\"A.docx\""), HasSubstr(message)))
        << program;
    EXPECT_THAT(LaidOut(pool, "letter", "B.docx"), AllOf(HasSubstr("\"B.docx\""), HasSubstr(message)))
        << program;
  }
}

TEST_F(LayoutPoolTest, SharesALongRunAmongItsProcesses) {
  auto settings = Settings();
  settings.workers = 2;
  LayoutPool pool(settings);
  std::vector<std::future<void>> run;
  for (int i = 0; i < 60; ++i) run.push_back(Start(pool, i % 20 == 7 ? "break" : "letter"));
  int failed = 0;
  for (auto& letter : run) {
    try {
      letter.get();
    } catch (const Failure&) {
      ++failed;
    }
  }
  EXPECT_EQ(failed, 3);
}

TEST_F(LayoutPoolTest, FailsWhatIsNotDoneWhenItCloses) {
  const auto hanging = folder_ / "hanging";
  std::vector<std::future<void>> unfinished;
  {
    LayoutPool pool(Settings());
    for (int i = 0; i < 5; ++i) unfinished.push_back(Start(pool, "hang " + hanging.string()));
    ASSERT_TRUE(tests::ComesTrue([&] { return exists(hanging); }, [] { usleep(1000); }));
  }
  for (auto& letter : unfinished) EXPECT_THROW(letter.get(), Failure);
}

TEST_F(LayoutPoolTest, NamesAFolderThatCannotTakeThePages) {
  LayoutPool pool(Settings());
  EXPECT_THAT([&] { pool.Layout("LETTER.docx", "letter", folder_ / "missing" / "letter.pdf").get(); },
              tests::Fails(Failure::Kind::kNotFound, HasSubstr((folder_ / "missing").string())));
}

}  // namespace
}  // namespace wordprocessor
