#include "host/settings_file.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <fstream>
#include <optional>
#include <system_error>

#include "host/ini_file.h"
#include "platform/failure.h"
#include "platform/file_access.h"
#include "platform/file_failure.h"
#include "platform/text.h"

namespace host {
namespace {

using platform::Failure;

// {user} is the demo user, or nobody yet.
constexpr std::string_view kFirstSettings = R"(; Settings of one user. Lines that start with ; are comments.
; Both programs read this file when they start. A folder that is set to nothing lies in the data folder.

[User]
; The officer's user id, sent with requests and stored as the last officer of a letter.
Id={user}
; The region whose letters and templates are offered.
Region=K1

[Folders]
; Local copies of the letter templates.
Templates=
; The workspace's own files.
Config=
; The reference database (code tables, letter definitions, template versions).
ReferenceDatabase=
; Where letters printed to the PDF folder are filed.
Printed=

[Reference]
Provider="Provider=SQLite;"

[Printing]
; A printer queue's name, "PDF folder", or nothing: the system's default queue, else the PDF folder.
Printer=

[Preview]
; Wait before a preview is merged, in milliseconds; anything up to 1500 means 1500.
DelayMilliseconds=1500
; How long the layout of one letter may take, in seconds.
LayoutSeconds=60

[DMVKorvadsk]
; Y shows the "View Bookmark" action and the diagnostic details.
System\DontPrint=N
)";

/// "" where the value is right, else a clause that follows it. Values are never empty here.
using Complaint = std::string_view (*)(const std::string& value);

std::optional<int> WholeNumber(const std::string& text) {
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

std::string_view AnyText(const std::string&) {
  return "";
}
std::string_view Path(const std::string& value) {
  return value.starts_with('~') || value.find('$') != std::string::npos
             ? "is taken as it stands, and ~ and $ mean nothing here; write the whole path"
             : "";
}
std::string_view Seconds(const std::string& value) {
  return WholeNumber(value).value_or(0) < 1 ? "is no number of seconds from 1 up" : "";
}
std::string_view Milliseconds(const std::string& value) {
  return WholeNumber(value).value_or(-1) < 0 ? "is no number of milliseconds from 0 up" : "";
}
std::string_view YesOrNo(const std::string& value) {
  return value == "Y" || value == "N" ? "" : "is neither Y nor N";
}

struct Setting {
  std::string_view section;
  std::string_view key;
  Complaint complaint;
};
// In the order of the first settings above.
constexpr auto kSettings = std::to_array<Setting>({
    {"User", "Id", AnyText},
    {"User", "Region", AnyText},
    {"Folders", "Templates", Path},
    {"Folders", "Config", Path},
    {"Folders", "ReferenceDatabase", Path},
    {"Folders", "Printed", Path},
    {"Reference", "Provider", AnyText},
    {"Printing", "Printer", AnyText},
    {"Preview", "DelayMilliseconds", Milliseconds},
    {"Preview", "LayoutSeconds", Seconds},
    {"DMVKorvadsk", "System\\DontPrint", YesOrNo},
});

const Setting* FindSetting(std::string_view section, std::string_view key) {
  const auto found = std::ranges::find_if(kSettings, [&](const Setting& setting) {
    return platform::EqualsIgnoringCase(setting.section, section) &&
           platform::EqualsIgnoringCase(setting.key, key);
  });
  return found == kSettings.end() ? nullptr : &*found;
}

std::string NameOf(std::string_view section, std::string_view key) {
  return "[" + std::string(section) + "] " + std::string(key);
}

/// The keys of the section, or the sections where there is none of that name.
std::string WhatThereIs(std::string_view section) {
  std::string keys;
  std::string sections;
  std::string_view last;
  for (const auto& setting : kSettings) {
    if (platform::EqualsIgnoringCase(setting.section, section)) {
      keys += (keys.empty() ? "" : ", ") + std::string(setting.key);
    }
    if (setting.section != last)
      sections += (last.empty() ? "[" : ", [") + std::string(setting.section) + "]";
    last = setting.section;
  }
  return keys.empty() ? "The sections are " + sections : "The settings there are " + keys;
}

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
  if (!std::filesystem::exists(file)) throw Failure(Failure::Kind::kNotFound, WhyNoSettings(folder_));
  const auto ini = IniFile::Read(file);
  for (const auto& bad : ini.bad_lines)
    Complain(bad.line, "\"" + bad.text + "\" is no setting; write KEY=VALUE.");
  for (const auto& entry : ini.entries) Take(entry);
}

void SettingsFile::Complain(std::size_t line, const std::string& what) {
  faults_.push_back("\"" + folder_.Settings().string() + "\", line " + std::to_string(line) + ": " + what);
}

void SettingsFile::Take(const IniFile::Entry& entry) {
  const auto name = NameOf(entry.section, entry.key);
  const auto* const setting = FindSetting(entry.section, entry.key);
  if (setting == nullptr)
    return Complain(entry.line,
                    name + " is no setting and counts for nothing. " + WhatThereIs(entry.section) + ".");
  const auto complaint = entry.value.empty() ? "" : setting->complaint(entry.value);
  if (!complaint.empty()) {
    return Complain(entry.line, "The value \"" + entry.value + "\" of " + name + " " +
                                    std::string(complaint) + ". It counts as not set.");
  }
  const auto place = NameOf(setting->section, setting->key);
  if (values_.contains(place)) Complain(entry.line, name + " is set a second time; this value counts.");
  values_[place] = entry.value;
}

void SettingsFile::CreateFor(const DataFolder& folder, OfficeKind kind) {
  if (folder.IsPrepared()) return;
  const auto part = folder.Settings().string() + ".part";
  errno = 0;
  std::ofstream file(part, std::ios::binary | std::ios::trunc);
  file << platform::ReplaceAll(kFirstSettings, "{user}", kind == OfficeKind::kDemo ? "DEMO01" : "");
  file.close();
  if (!file) throw platform::FileFailure("could not be written", folder.Settings(), errno);
  platform::Protect(part);
  std::error_code error;
  std::filesystem::rename(part, folder.Settings(), error);
  if (error) throw platform::FileFailure("could not be written", folder.Settings(), error.value());
}

std::string SettingsFile::Text(std::string_view section, std::string_view key,
                               const std::string& default_value) const {
  const auto found = values_.find(NameOf(section, key));
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
  const auto found = values_.find(NameOf(application, std::string(section) + '\\' + std::string(key)));
  return found == values_.end() ? std::string(default_value) : found->second;
}

std::string SettingsFile::Printer() const {
  return Text("Printing", "Printer", "");
}

std::filesystem::path SettingsFile::PdfFolder() const {
  return Folder("Printed", folder_.Printed());
}

std::chrono::milliseconds SettingsFile::LayoutTimeOut() const {
  constexpr int kDefaultSeconds = 60;
  return std::chrono::seconds{WholeNumber(Text("Preview", "LayoutSeconds", "")).value_or(kDefaultSeconds)};
}

}  // namespace host
