#include "host/data_folder.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <optional>
#include <string>

#include "platform/failure.h"
#include "tests/support/temporary_folder.h"

namespace host {
namespace {

/// Puts an environment variable back at the end.
class Environment {
 public:
  Environment(const char* name, const char* value) : name_(name) {
    if (const char* old = std::getenv(name)) old_ = old;
    value == nullptr ? unsetenv(name) : setenv(name, value, 1);
  }
  ~Environment() { old_ ? setenv(name_, old_->c_str(), 1) : unsetenv(name_); }

 private:
  const char* name_;
  std::optional<std::string> old_;
};

TEST(DataFolder, FollowsTheUsersDataFolderThenTheHomeThenTheAccount) {
  {
    const Environment xdg("XDG_DATA_HOME", "/srv/data");
    EXPECT_EQ(DataFolder::OfUser().root(), "/srv/data/zemlo-correspondence");
  }
  const Environment relative("XDG_DATA_HOME", "not/absolute");
  {
    const Environment home("HOME", "/home/clerk");
    EXPECT_EQ(DataFolder::OfUser().root(), "/home/clerk/.local/share/zemlo-correspondence");
  }
  const Environment homeless("HOME", nullptr);
  EXPECT_TRUE(DataFolder::OfUser().root().is_absolute());
}

TEST(DataFolder, NamesTheFolderItCannotMake) {
  const tests::TemporaryFolder folder;
  tests::WriteFile(folder / "taken", "a file");
  try {
    DataFolder(folder / "taken").Create();
    FAIL() << "a folder was made where a file is";
  } catch (const platform::Failure& failure) {
    EXPECT_THAT(failure.description(), testing::HasSubstr((folder / "taken").string()));
    EXPECT_THAT(failure.description(), testing::HasSubstr("--data DIR"));
  }
}

TEST(DataFolder, IsNewUntilSomethingLiesInIt) {
  const tests::TemporaryFolder folder;
  EXPECT_TRUE(DataFolder(folder / "absent").IsNew());
  std::filesystem::create_directory(folder / "lost+found");
  EXPECT_TRUE(DataFolder(folder.path()).IsNew()) << "a disk just made";
  tests::WriteFile(folder / "letter.pdf", "");
  EXPECT_FALSE(DataFolder(folder.path()).IsNew());
  EXPECT_FALSE(DataFolder(folder / "letter.pdf").IsNew());
}

}  // namespace
}  // namespace host
