#include "server/link/communications_client.h"

#include <sys/resource.h>

#include <chrono>
#include <csignal>
#include <thread>

#include <gmock/gmock.h>

#include "platform/failure.h"
#include "server/storage/server_folders.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/waiting_event_queue.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using tests::ReadFile;

class Downloads : public testing::Test {
 protected:
  Downloads() {
    std::filesystem::create_directories(folder_ / "server/templates");
    tests::WriteFile(folder_ / "server/templates/Letter.docx", "contents");
    hearing_ = client_->MessageReceived.Connect(
        [this](const std::string& text, const std::string&) { heard_.push_back(text); });
  }

  std::string ServerPath(const std::string& name) const {
    return server::TemplateFolder(folder_.path()).string() + "\\" + name;
  }
  void Download(const std::string& source) { provider_.Download(source, (folder_ / "local").string() + "/"); }
  void WaitForAll() {
    events_.RunUntil([this] { return !provider_.HasWorkUnderWay(); });
  }
  std::string LocalFile(const std::string& name) const { return ReadFile(folder_ / ("local/" + name)); }

  tests::TemporaryFolder folder_;
  tests::WaitingEventQueue events_;
  server::CommunicationsClientProvider provider_{events_, folder_.path()};
  std::shared_ptr<platform::CommClient> client_ = provider_.GetClient();
  std::vector<std::string> heard_;
  platform::Connection hearing_;
};

TEST_F(Downloads, AFileArrivesWholeUnderTheNameAskedFor) {
  provider_.Connect();
  Download(ServerPath("LETTER.DOCX"));
  EXPECT_THAT(heard_, ElementsAre()) << "never inside the call";
  WaitForAll();
  EXPECT_EQ(LocalFile("LETTER.DOCX"), "contents");
  EXPECT_THAT(heard_, ElementsAre("<COMMAND>FILEDOWNLOAD</COMMAND><STATUS>SUCCESSFULL</STATUS><SOURCE>" +
                                  ServerPath("LETTER.DOCX") + "</SOURCE>"));
}

TEST_F(Downloads, WaitForTheConnectionAndComeInTheirOrder) {
  Download(ServerPath("Letter.docx"));
  Download(ServerPath("B&B.docx"));
  // Long enough for one that does not wait to be seen; nothing has to come in that time.
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  events_.RunPending();
  EXPECT_EQ(LocalFile("Letter.docx"), "");
  provider_.Connect();
  provider_.Connect();
  WaitForAll();
  EXPECT_THAT(heard_,
              ElementsAre(HasSubstr("SUCCESSFULL"), testing::AllOf(HasSubstr("no file \"B&amp;B.docx\""),
                                                                   HasSubstr("B&amp;B.docx</SOURCE>"))));
}

TEST_F(Downloads, OnlyFilesOfTheTemplateFolderAreGivenOut) {
  tests::WriteFile(folder_ / "server/server.db", "secret");
  provider_.Connect();
  const auto folder = server::TemplateFolder(folder_.path()).string();
  for (const auto& source :
       {folder + "\\..\\server.db", folder + "/../server.db", folder + "\\..", folder + "\\",
        std::string("/etc/hostname"), std::string("Letter.docx"), std::string()}) {
    heard_.clear();
    Download(source);
    WaitForAll();
    EXPECT_THAT(heard_, ElementsAre(HasSubstr("is no file of the server's template folder"))) << source;
  }
  EXPECT_FALSE(std::filesystem::exists(folder_ / "local"));
}

TEST_F(Downloads, ATargetThatCannotBeWrittenIsReported) {
  provider_.Connect();
  tests::WriteFile(folder_ / "file", "in the way");
  // Nobody can put a file into /proc, whatever this user may write to.
  for (const auto& target : {(folder_ / "file").string() + "/", std::string("/proc/self/")}) {
    heard_.clear();
    provider_.Download(ServerPath("Letter.docx"), target);
    WaitForAll();
    ASSERT_EQ(heard_.size(), 1u) << target;
    EXPECT_THAT(heard_[0], testing::Not(HasSubstr("SUCCESSFULL"))) << target;
  }
  EXPECT_EQ(ReadFile(folder_ / "file"), "in the way");
}

/// No file may grow beyond that size meanwhile, as on a disk that has just that much room.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) {
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limit{bytes, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;
  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, handler_);
  }

 private:
  rlimit before_ = {};
  void (*const handler_)(int) = std::signal(SIGXFSZ, SIG_IGN);
};

// Files of 0 or 4,096 bytes stood under the templates' names for ever, and were told as downloaded.
TEST_F(Downloads, AFileThatFindsNoRoomLeavesWhatWasThereAndNothingOfItself) {
  tests::WriteFile(folder_ / "server/templates/Letter.docx", std::string(5188, 'x'));
  std::filesystem::create_directories(folder_ / "local");
  tests::WriteFile(folder_ / "local/Old.docx", "old");
  tests::WriteFile(folder_ / "server/templates/Old.docx", std::string(5188, 'x'));
  for (const rlim_t room : {rlim_t{0}, rlim_t{4096}}) {
    heard_.clear();
    {
      const FileSizeLimit limit(room);
      provider_.Connect();
      Download(ServerPath("Letter.docx"));
      Download(ServerPath("Old.docx"));
      WaitForAll();
    }
    EXPECT_THAT(heard_, testing::Each(testing::Not(HasSubstr("SUCCESSFULL")))) << room;
    EXPECT_THAT(heard_, testing::SizeIs(2)) << room;
    EXPECT_EQ(LocalFile("Old.docx"), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_ / "local"), {}), 1) << room;
  }
  Download(ServerPath("Letter.docx"));
  WaitForAll();
  EXPECT_EQ(LocalFile("Letter.docx").size(), 5188u);
}

TEST_F(Downloads, AFileThatIsNoTemplateOnTheServerIsNotHandedOut) {
  server::CommunicationsClientProvider provider(
      events_, folder_.path(), [](const std::string& content, const std::string& name) {
        if (content.empty()) throw platform::Failure(platform::Failure::Kind::kDamaged, name + " is empty");
      });
  const auto hearing = provider.GetClient()->MessageReceived.Connect(
      [this](const std::string& text, const std::string&) { heard_.push_back(text); });
  tests::WriteFile(folder_ / "server/templates/Empty.docx", "");
  provider.Connect();
  for (const auto* name : {"Empty.docx", "Letter.docx"})
    provider.Download(ServerPath(name), (folder_ / "local").string());
  events_.RunUntil([&] { return !provider.HasWorkUnderWay(); });
  EXPECT_THAT(heard_, ElementsAre(HasSubstr("Empty.docx is empty"), HasSubstr("SUCCESSFULL")));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_ / "local"), {}), 1);
}

TEST_F(Downloads, AnEarlierFileIsReplacedAndNothingElseIsLeftBehind) {
  std::filesystem::create_directories(folder_ / "local");
  tests::WriteFile(folder_ / "local/Letter.docx", "old");
  provider_.Connect();
  Download(ServerPath("Letter.docx"));
  WaitForAll();
  EXPECT_EQ(LocalFile("Letter.docx"), "contents");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_ / "local"), {}), 1);
}

}  // namespace
