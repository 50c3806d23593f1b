#include "host/settings_file.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

#include "host/known_settings.h"
#include "platform/failure.h"
#include "platform/file_access.h"
#include "platform/text.h"
#include "platform/whole_file.h"

namespace host {
namespace {

using platform::Failure;

std::string WithSeparator(const std::filesystem::path& folder) {
  return (folder / "").string();
}

std::string WhyNoSettings(const DataFolder& folder) {
  const auto name = "\"" + folder.root().string() + "\"";
  const auto mark = ReadOfficeMark(folder);
  if (mark && !mark->is_whole) {
    return "The data folder " + name + " is not ready yet. Let \"zemlo-letters init\" come to its end.";
  }
  if (folder.IsNew()) {
    const auto init = [&](const std::string& kind) {
      return "\"zemlo-letters init --" + kind + " --data " + folder.root().string() + "\"";
    };
    return "There is no office in the data folder " + name + ". " + init("demo") +
           " makes one with invented customers, " + init("empty") + " one for your own.";
  }
  return "The settings file \"" + folder.Settings().string() +
         "\" is missing from a folder that is in use. Make the disk it lies on available again, or restore "
         "it from a backup.";
}

}  // namespace

SettingsFile::SettingsFile(const DataFolder& folder) : folder_(folder) {
  const auto file = folder_.Settings();
  if (!platform::IsThere(file)) throw Failure(Failure::Kind::kNotFound, WhyNoSettings(folder_));
  const auto ini = IniFile::Read(file);
  for (const auto& bad : ini.bad_lines)
    Complain(bad.line, "\"" + bad.text + "\" is no setting; write KEY=VALUE.");
  for (const auto& entry : ini.entries) Take(entry);
}

void SettingsFile::Complain(std::size_t line, const std::string& what) {
  faults_.push_back("\"" + folder_.Settings().string() + "\", line " + std::to_string(line) + ": " + what);
}

void SettingsFile::Take(const IniFile::Entry& entry) {
  const auto name = SettingName(entry.section, entry.key);
  const auto* const setting = FindSetting(entry.section, entry.key);
  if (setting == nullptr)
    return Complain(entry.line,
                    name + " is no setting and counts for nothing. " + SettingsThereAre(entry.section) + ".");
  const auto complaint = entry.value.empty() ? "" : setting->Complaint(entry.value);
  if (!complaint.empty()) {
    return Complain(entry.line, "The value \"" + entry.value + "\" of " + name + " " +
                                    std::string(complaint) + ". It counts as not set.");
  }
  const auto place = SettingName(setting->section, setting->key);
  if (values_.contains(place)) Complain(entry.line, name + " is set a second time; this value counts.");
  values_[place] = entry.value;
}

void SettingsFile::CreateFor(const DataFolder& folder, OfficeKind kind) {
  if (folder.IsPrepared()) return;
  platform::WriteWholeFile(
      folder.Settings(),
      platform::ReplaceAll(kFirstSettings, "{user}", kind == OfficeKind::kDemo ? "DEMO01" : ""));
}

std::string SettingsFile::Text(std::string_view section, std::string_view key,
                               const std::string& default_value) const {
  const auto found = values_.find(SettingName(section, key));
  return found == values_.end() || found->second.empty() ? default_value : found->second;
}

std::filesystem::path SettingsFile::Folder(std::string_view key,
                                           const std::filesystem::path& default_folder) const {
  const std::filesystem::path set = Text("Folders", key, "");
  return set.empty() ? default_folder : folder_.root() / set;
}

std::string SettingsFile::UserId() const {
  return Text("User", "Id", "");
}
std::string SettingsFile::Region() const {
  return Text("User", "Region", "");
}

std::string SettingsFile::TemplateFolder() const {
  return WithSeparator(Folder("Templates", folder_.Templates()));
}

std::string SettingsFile::ConfigFolder() const {
  return WithSeparator(Folder("Config", folder_.Config()));
}

std::string SettingsFile::LocalDatabasePath() const {
  return Folder("ReferenceDatabase", folder_.ReferenceDatabase()).string();
}

std::string SettingsFile::ProviderString() const {
  return Text("Reference", "Provider", "Provider=SQLite;");
}

std::chrono::milliseconds SettingsFile::PreviewDelay() const {
  constexpr int kDefault = 1500;
  return std::chrono::milliseconds{WholeNumber(Text("Preview", "DelayMilliseconds", "")).value_or(kDefault)};
}

std::string SettingsFile::GetSetting(std::string_view application, std::string_view section,
                                     std::string_view key, std::string_view default_value) const {
  const auto found = values_.find(SettingName(application, std::string(section) + '\\' + std::string(key)));
  return found == values_.end() ? std::string(default_value) : found->second;
}

std::string SettingsFile::Printer() const {
  return Text("Printing", "Printer", "");
}

bool SettingsFile::PrintsWithoutAsking() const {
  return Text("Printing", "WithoutAsking", "N") == "Y";
}

std::filesystem::path SettingsFile::PdfFolder() const {
  return Folder("Printed", folder_.Printed());
}

std::chrono::milliseconds SettingsFile::LayoutTimeOut() const {
  constexpr int kDefaultSeconds = 60;
  return std::chrono::seconds{WholeNumber(Text("Preview", "LayoutSeconds", "")).value_or(kDefaultSeconds)};
}

}  // namespace host
