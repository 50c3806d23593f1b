#include "host/view_settings_file.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

#include "tests/support/temporary_folder.h"

namespace host {
namespace {

TEST(ViewSettingsFile, RemembersForTheGroupWhereTheFolderIsShared) {
  const tests::TemporaryFolder folder;
  const DataFolder data(folder.path());
  std::filesystem::create_directory(data.Config());
  chmod(data.Config().c_str(), 02770);
  for (const auto* width : {"120", "140"}) {
    ViewSettingsFile settings(data);
    settings.Remember("Grid/Widths", width);
  }
  EXPECT_EQ(ViewSettingsFile(data).Remembered("Grid/Widths"), "140");
  EXPECT_EQ(std::filesystem::status(data.Config() / "desktop.ini").permissions(),
            std::filesystem::perms(0660));
}

}  // namespace
}  // namespace host
