#include "workspace/messaging/download_notification.h"

#include <limits>

#include <gmock/gmock.h>

#include "tests/fakes/fake_services.h"

namespace workspace {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class DownloadNotificationTest : public testing::Test {
 protected:
  void ClientReports(const std::string& status, const std::string& command = "FILEDOWNLOAD") {
    fakes_.comm_clients.Report(status, "TAX110.docx", command);
  }

  fakes::FakeServices fakes_;
  const std::string message_title_ = "Letters";
  std::vector<std::string> came_;
  DownloadNotification notification_{fakes_.services(), message_title_,
                                     [this](const std::string& source) { came_.push_back(source); }};
  platform::Connection received_ = fakes_.comm_clients.client->MessageReceived.Connect(
      [this](const std::string& message, const std::string&) { notification_.MessageReceived(message); });
};

TEST_F(DownloadNotificationTest, ShowsTheFirstFailedDownloadAndCountsAll) {
  fakes_.host.pointer = platform::MousePointer::kHourglass;
  ClientReports("NO SPACE");
  ClientReports("NO SPACE");

  EXPECT_THAT(fakes_.host.MessageTexts(),
              ElementsAre("File download not successful.\r\nNO SPACE\r\nTAX110.docx"));
  EXPECT_EQ(fakes_.host.messages[0].icon, platform::MessageIcon::kExclamation);
  EXPECT_EQ(fakes_.host.messages[0].title, "Letters");
  EXPECT_EQ(notification_.failures().value(), 2);
  EXPECT_EQ(fakes_.host.pointer, platform::MousePointer::kNormal);
  EXPECT_TRUE(fakes_.status.ready);
  EXPECT_THAT(fakes_.status.texts, ElementsAre("Ready", "Ready"));
}

TEST_F(DownloadNotificationTest, ShowsWhatStandsForAMarkAsTheMark) {
  fakes_.comm_clients.Report("no file &quot;B&amp;amp;B.docx&quot; &lt;1&gt;", "srv\\R&amp;D\\B.docx");
  EXPECT_THAT(
      fakes_.host.MessageTexts(),
      ElementsAre("File download not successful.\r\nno file \"B&amp;B.docx\" <1>\r\nsrv\\R&D\\B.docx"));
}

TEST_F(DownloadNotificationTest, TakesOnlyTheExactStatusForSuccess) {
  struct Case {
    const char* status;
    const char* command;
    int failures;
  };
  int before = 0;
  for (const auto& [status, command, failures] :
       {Case{"SUCCESSFULL", "FILEDOWNLOAD", 0}, Case{"SUCCESSFUL", "FILEDOWNLOAD", 1},
        Case{"Successfull", "FILEDOWNLOAD", 1}, Case{"", "FILEDOWNLOAD", 1},
        Case{"NO SPACE", "FILEUPLOAD", 0}, Case{"NO SPACE", "filedownload", 0}}) {
    fakes_.status.texts.clear();
    ClientReports(status, command);
    EXPECT_EQ(notification_.failures().value() - before, failures) << command << " " << status;
    before = notification_.failures().value();
    EXPECT_THAT(fakes_.status.texts, ElementsAre("Ready")) << command << " " << status;
  }
  EXPECT_THAT(came_, ElementsAre("TAX110.docx"));
}

TEST_F(DownloadNotificationTest, StaysAtTheLargestCountAndReportsIt) {
  for (int failure = 0; failure < std::numeric_limits<std::int16_t>::max(); ++failure) {
    ClientReports("NO SPACE");
  }
  EXPECT_THAT(fakes_.errors.reports, IsEmpty());
  ClientReports("NO SPACE");
  EXPECT_EQ(notification_.failures().value(), 32767);
  EXPECT_THAT(fakes_.errors.Procedures(), ElementsAre("ZEMLO_Corresp.moClient_MessageReceived"));
  EXPECT_THAT(fakes_.host.messages, testing::SizeIs(1)) << "the first one";
}

}  // namespace
}  // namespace workspace
