#include "host/server_settings.h"

#include <gmock/gmock.h>

#include <fstream>

#include "tests/support/temporary_folder.h"

namespace host_tests {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class ServerSettingsFile : public ::testing::Test {
 protected:
  host::ServerSettings With(const std::string& text) {
    std::ofstream(folder.path() / "server.ini") << text;
    return host::ServerSettings(host::DataFolder(folder.path()));
  }
  tests::TemporaryFolder folder;
};

TEST_F(ServerSettingsFile, GivesAUserTheRightsOfTheOwnLineElseEverybodys) {
  const auto settings = With("[Rights]\n*=CustomerEdit\nclerk7 = customeradd , UpdateCustNotify\nguest=\n");
  EXPECT_TRUE(settings.Holds("ANYBODY", "CustomerEdit"));
  EXPECT_FALSE(settings.Holds("ANYBODY", "CustomerAdd"));
  EXPECT_TRUE(settings.Holds(" Clerk7 ", "CustomerAdd"));
  EXPECT_FALSE(settings.Holds("CLERK7", "CustomerEdit"));
  EXPECT_FALSE(settings.Holds("guest", "CustomerEdit"));
  EXPECT_THAT(settings.faults(), IsEmpty());
}

TEST_F(ServerSettingsFile, GivesNobodyARightWithoutOne) {
  const host::ServerSettings missing{host::DataFolder(folder.path())};
  EXPECT_FALSE(missing.Holds("DEMO01", "CustomerEdit"));
}

TEST_F(ServerSettingsFile, NamesWhatItCannotTake) {
  const auto settings = With("[Rights]\nA=CustomerEdit, CustomerDelete\nnonsense\n[Other]\nX=1\n");
  EXPECT_TRUE(settings.Holds("A", "CustomerEdit"));
  EXPECT_THAT(
      settings.faults(),
      ElementsAre(EndsWith("line 3: \"nonsense\" is no setting; write KEY=VALUE."),
                  EndsWith("line 2: \"CustomerDelete\" is no right; there are CustomerEdit, CustomerAdd "
                           "and UpdateCustNotify. It counts for nothing."),
                  EndsWith("line 5: [Other] X is no setting and counts for nothing.")));
}

TEST_F(ServerSettingsFile, NamesAProgramThatVerifiesAddresses) {
  const auto settings = With("[AddressVerification]\nProgram=/bin/sh\nTimeOutSeconds=7\n");
  EXPECT_EQ(settings.AddressProgram(), "/bin/sh");
  EXPECT_EQ(settings.AddressTimeOut(), std::chrono::seconds(7));
  EXPECT_THAT(settings.faults(), IsEmpty());
  EXPECT_TRUE(With("[AddressVerification]\nProgram=\n").AddressProgram().empty());

  const auto wrong = With("[AddressVerification]\nProgram=sh\nTimeOutSeconds=0\nTimeOut=5\n");
  // Never another way than the office has asked for.
  EXPECT_EQ(wrong.AddressProgram(), "sh");
  EXPECT_EQ(wrong.AddressTimeOut(), std::chrono::seconds(5));
  EXPECT_THAT(wrong.faults(),
              ElementsAre(HasSubstr("line 2: [AddressVerification] Program \"sh\" is no program"),
                          HasSubstr("line 3: [AddressVerification] TimeOutSeconds \"0\" is no number"),
                          HasSubstr("line 4: [AddressVerification] TimeOut is no setting")));
}

TEST_F(ServerSettingsFile, BeginsWithEveryRightForEverybodyAndIsKept) {
  const host::DataFolder data(folder.path());
  host::ServerSettings::CreateFor(data);
  EXPECT_TRUE(host::ServerSettings(data).Holds("DEMO01", "UpdateCustNotify"));
  std::ofstream(folder.path() / "server.ini") << "[Rights]\n";
  host::ServerSettings::CreateFor(data);
  EXPECT_FALSE(host::ServerSettings(data).Holds("DEMO01", "UpdateCustNotify"));
}

}  // namespace
}  // namespace host_tests
