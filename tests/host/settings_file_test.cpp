#include "host/settings_file.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include "platform/failure.h"
#include "tests/support/failing.h"
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

std::vector<std::string> FaultsOf(const std::string& text) {
  const TemporaryFolder folder;
  WriteFile(folder / "settings.ini", text);
  return SettingsFile(DataFolder(folder.path())).faults();
}

TEST(SettingsFile, TheFirstSettingsHaveNoFault) {
  const TemporaryFolder folder;
  SettingsFile::CreateFor(DataFolder(folder.path()), OfficeKind::kDemo);
  EXPECT_THAT(SettingsFile(DataFolder(folder.path())).faults(), testing::IsEmpty());
}

TEST(SettingsFile, WhatIsWrongIsNamedWithItsLineAndCountsAsNotSet) {
  struct Case {
    const char* text;
    std::vector<const char*> words;
  };
  for (const auto& [text, words] : std::vector<Case>{
           {"[User]\nRegoin=K1\n", {"settings.ini\", line 2", "[User] Regoin is no setting", "Id, Region"}},
           {"[Usr]\nRegion=K1\n", {"line 2", "[Usr] Region is no setting", "[User], [Folders]"}},
           {"Region=K1\n", {"line 1", "[] Region is no setting"}},
           {"[User]\nRegion K1\n", {"line 2", "\"Region K1\" is no setting"}},
           {"[User]\nId=A\nid=B\n", {"line 3", "[User] id is set a second time"}},
           {"[Preview]\nLayoutSeconds=abc\n",
            {"line 2", "\"abc\"", "[Preview] LayoutSeconds", "seconds from 1"}},
           {"[Preview]\nLayoutSeconds=0\n", {"\"0\"", "seconds from 1"}},
           {"[Preview]\nDelayMilliseconds=1.5\n", {"\"1.5\"", "milliseconds"}},
           {"[Reference]\nProvider=Foo;\n",
            {"line 2", "\"Foo;\"", "[Reference] Provider", "Provider=SQLite;"}},
           {"[Folders]\nPrinted=~/letters\n", {"\"~/letters\"", "[Folders] Printed", "whole path"}},
           {"[Folders]\nTemplates=$HOME/letters\n", {"\"$HOME/letters\"", "[Folders] Templates"}},
           {"[DMVKorvadsk]\nSystem\\DontPrint=yes\n", {"\"yes\"", "neither Y nor N"}}}) {
    const auto faults = FaultsOf(text);
    ASSERT_EQ(faults.size(), 1u) << text;
    for (const auto* word : words) EXPECT_THAT(faults[0], testing::HasSubstr(word));
  }
  const TemporaryFolder folder;
  WriteFile(folder / "settings.ini", "[Preview]\nLayoutSeconds=abc\n[Folders]\nPrinted=~/letters\n");
  const SettingsFile settings{DataFolder(folder.path())};
  EXPECT_EQ(settings.LayoutTimeOut(), std::chrono::seconds(60));
  EXPECT_EQ(settings.PdfFolder(), folder / "printed");
}

TEST(SettingsFile, IsReadAsPeopleWriteIt) {
  const TemporaryFolder folder;
  WriteFile(folder / "settings.ini",
            "\xEF\xBB\xBF[user]\r\n id = OFFICER 7 ; until May\r\nREGION=K1\r\n"
            "[Reference]\r\nProvider=provider=sqlite\r\n"
            "[Folders]\r\nPrinted=/srv/letters, printed;old\r\n[Printing]\nPrinter=\"Room 12 ; left\"\n");
  const SettingsFile settings{DataFolder(folder.path())};
  EXPECT_THAT(settings.faults(), testing::IsEmpty());
  EXPECT_EQ(settings.UserId(), "OFFICER 7");
  EXPECT_EQ(settings.Region(), "K1");
  EXPECT_EQ(settings.PdfFolder(), "/srv/letters, printed;old");
  EXPECT_EQ(settings.Printer(), "Room 12 ; left");
}

TEST(SettingsFile, InAFolderOfSomebodyElseOrBehindAFolderOfItsNameIsNamed) {
  const auto why_not = [](const std::filesystem::path& folder) -> std::string {
    return tests::WhyNot([&] { const SettingsFile settings{DataFolder(folder)}; });
  };
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder / "settings.ini");
  EXPECT_THAT(why_not(folder.path()), testing::AllOf(testing::HasSubstr("\"settings.ini\" in the folder \""),
                                                     testing::HasSubstr("Move it away")));
  std::filesystem::permissions(folder.path(), std::filesystem::perms::none);
  constexpr uid_t kNobody = 65534;
  const auto user = geteuid();
  ASSERT_EQ(seteuid(user == 0 ? kNobody : user), 0);
  const auto denied = why_not(folder.path());
  std::string no_mark;
  try {
    ReadOfficeMark(DataFolder(folder.path()));
  } catch (const platform::Failure& failure) {
    no_mark = failure.description();
  }
  ASSERT_EQ(seteuid(user), 0);
  EXPECT_THAT(denied, testing::AllOf(testing::HasSubstr("\"settings.ini\" in the folder \""),
                                     testing::HasSubstr("Permission denied. Choose another folder")));
  EXPECT_THAT(no_mark, testing::HasSubstr("\"office.txt\" in the folder \""));
}

TEST(SettingsFile, AFileThatIsNotUtf8IsRefusedByName) {
  using namespace std::string_literals;
  const std::vector<std::pair<std::string, const char*>> files = {{"\xFF\xFE[\0U\0s\0e\0r\0]\0"s, "UTF-16"},
                                                                  {"[\0U\0s\0e\0r\0]\0\n\0"s, "UTF-16"},
                                                                  {"[User]\nId=M\xFCller\n", "line 2"}};
  for (const auto& [text, words] : files) {
    EXPECT_THAT([&] { FaultsOf(text); },
                tests::FailsSaying(testing::AllOf(testing::HasSubstr("settings.ini"),
                                                  testing::HasSubstr(words), testing::HasSubstr("UTF-8"))));
  }
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
