#include "wordprocessor/office/profile.h"

#include <array>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace wordprocessor {
namespace {

struct Setting {
  std::string_view path;
  std::string_view name;
  std::string_view value;
};

// Paths and names are those of the office's configuration schema (LibreOffice 7.4, registry/main.xcd);
// a setting that a later office no longer knows is passed over by it.
constexpr auto kSettings = std::to_array<Setting>({
    // The office runs its graphics self-test (0.7 s) whenever its version is above the one noted here, and
    // without a window it never notes one.
    {"/org.openoffice.Setup/Product", "ooSetupLastVersion", "99.9"},
    {"/org.openoffice.Office.Common/Misc", "FirstRun", "false"},

    {"/org.openoffice.Office.Common/Security/Scripting", "MacroSecurityLevel", "3"},
    {"/org.openoffice.Office.Common/Security/Scripting", "DisableMacrosExecution", "true"},
    {"/org.openoffice.Office.Common/Security/Scripting", "BlockUntrustedRefererLinks", "true"},
    {"/org.openoffice.Office.Common/Security/Scripting", "CheckDocumentEvents", "true"},
    {"/org.openoffice.Office.Java/VirtualMachine", "Enable", "false"},

    // When links are updated: never is 0 in texts, 1 in embedded tables.
    {"/org.openoffice.Office.Writer/Content/Update", "Link", "0"},
    {"/org.openoffice.Office.Calc/Content/Update", "Link", "1"},

    {"/org.openoffice.Office.Recovery/RecoveryInfo", "Enabled", "false"},
    {"/org.openoffice.Office.Recovery/AutoSave", "Enabled", "false"},
    {"/org.openoffice.Office.Common/Save/Document", "AutoSave", "false"},
    {"/org.openoffice.Office.Common/Save/Document", "GenerateThumbnail", "false"},
    {"/org.openoffice.Office.Common/Misc", "UseLocking", "false"},
    {"/org.openoffice.Office.Common/Misc", "UseDocumentOOoLockFile", "false"},
    {"/org.openoffice.Office.Common/Misc", "UseDocumentSystemFileLocking", "false"},
    {"/org.openoffice.Office.Common/History", "Size", "0"},
    {"/org.openoffice.Office.Common/History", "PickListSize", "0"},
    {"/org.openoffice.Office.Common/History", "HelpBookmarkSize", "0"},
    {"/org.openoffice.Office.Common/Undo", "Steps", "0"},
    {"/org.openoffice.Office.Linguistic/SpellChecking", "IsSpellAuto", "false"},

    // A letter comes out the same in every office, whatever the user's language.
    {"/org.openoffice.Setup/L10N", "ooLocale", "en-US"},
    {"/org.openoffice.Setup/L10N", "ooSetupSystemLocale", "en-US"},
});

constexpr std::string_view kHead =
    R"(<?xml version="1.0" encoding="UTF-8"?>
<oor:items xmlns:oor="http://openoffice.org/2001/registry" xmlns:xs="http://www.w3.org/2001/XMLSchema")"
    R"( xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance">
)";

}  // namespace

void SeedProfile(const std::filesystem::path& profile) {
  const auto folder = profile / "user";
  std::filesystem::create_directories(folder);
  std::ofstream file(folder / "registrymodifications.xcu", std::ios::binary);
  file << kHead;
  for (const auto& setting : kSettings) {
    file << "<item oor:path=\"" << setting.path << "\"><prop oor:name=\"" << setting.name
         << "\" oor:op=\"fuse\"><value>" << setting.value << "</value></prop></item>\n";
  }
  file << "</oor:items>\n";
  file.close();
  if (!file) {
    throw std::runtime_error("The layout process could not write into the folder \"" + folder.string() +
                             "\". Free some space there, or see to its permissions.");
  }
}

}  // namespace wordprocessor
