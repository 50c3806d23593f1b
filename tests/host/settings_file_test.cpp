#include "host/settings_file.h"

#include <gmock/gmock.h>

#include "platform/failure.h"
#include "tests/support/temporary_folder.h"

namespace host {
namespace {

using tests::TemporaryFolder;
using tests::WriteFile;

TEST(SettingsFile, TheDemoUsersSettingsStandInTheDataFolder) {
  const TemporaryFolder folder;
  const DataFolder data(folder.path());
  SettingsFile::CreateFor(data, OfficeKind::kDemo);
  const SettingsFile settings(data);
  EXPECT_EQ(settings.UserId(), "DEMO01");
  EXPECT_EQ(settings.Region(), "K1");
  EXPECT_EQ(settings.TemplateFolder(), folder.path().string() + "/templates/");
  EXPECT_EQ(settings.ConfigFolder(), folder.path().string() + "/config/");
  EXPECT_EQ(settings.LocalDatabasePath(), folder.path().string() + "/reference.db");
  EXPECT_EQ(settings.ProviderString(), "Provider=SQLite;");
  EXPECT_EQ(settings.PreviewDelay(), std::chrono::milliseconds{1500});
  EXPECT_EQ(settings.GetSetting("DMVKorvadsk", "System", "DontPrint", "?"), "N");
  EXPECT_EQ(settings.GetSetting("DMVKorvadsk", "System", "Unknown", "?"), "?");
}

TEST(SettingsFile, WhatTheOfficeHasSetIsKeptAndRead) {
  const TemporaryFolder folder;
  WriteFile(folder / "settings.ini",
            "[User]\nId=OFFICER É\nRegion=\" k2 \"\n[Folders]\nTemplates=/srv/letters\nPrinted=out\n"
            "[Printing]\nPrinter=Room 12\n[DMVKorvadsk]\nSystem\\DontPrint=Y\n");
  const DataFolder data(folder.path());
  SettingsFile::CreateFor(data, OfficeKind::kDemo);
  const SettingsFile settings(data);
  EXPECT_EQ(settings.UserId(), "OFFICER É");
  EXPECT_EQ(settings.Region(), " k2 ");
  EXPECT_EQ(settings.TemplateFolder(), "/srv/letters/");
  EXPECT_EQ(settings.PdfFolder(), folder / "out");
  EXPECT_EQ(settings.Printer(), "Room 12");
  EXPECT_EQ(settings.GetSetting("DMVKorvadsk", "System", "DontPrint", "N"), "Y");
}

TEST(SettingsFile, AFolderWithoutSettingsSaysWhatToDo) {
  const TemporaryFolder folder;
  try {
    const SettingsFile settings{DataFolder(folder.path())};
    FAIL() << "settings were read where there are none";
  } catch (const platform::Failure& failure) {
    EXPECT_THAT(failure.description(), testing::HasSubstr("zemlo-letters init"));
    EXPECT_THAT(failure.description(), testing::HasSubstr(folder.path().string()));
  }
}

TEST(SettingsFile, AnOfficeStartsWithoutAUser) {
  const TemporaryFolder folder;
  const DataFolder data(folder.path());
  SettingsFile::CreateFor(data, OfficeKind::kOwn);
  EXPECT_EQ(SettingsFile(data).UserId(), "");
}

}  // namespace
}  // namespace host
