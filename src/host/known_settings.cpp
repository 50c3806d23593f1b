#include "host/known_settings.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "platform/text.h"

namespace host {

const std::string_view kFirstSettings = R"(; Settings of one user. Lines that start with ; are comments.
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
; Y prints without asking for printer, copies, sides and pages: on the printer chosen last, else the one above.
WithoutAsking=N

[Preview]
; Wait before a preview is merged, in milliseconds; anything up to 1500 means 1500.
DelayMilliseconds=1500
; How long the layout of one letter may take, in seconds.
LayoutSeconds=60

[DMVKorvadsk]
; Y shows the "View Bookmark" action and the diagnostic details.
System\DontPrint=N
)";

namespace {

std::string_view AnyText(const std::string&) {
  return "";
}
// The connection text is the given one; there is one kind of reference database.
std::string_view Provider(const std::string& value) {
  const auto name = value.substr(0, value.find_last_not_of("; ") + 1);
  return platform::EqualsIgnoringCase(name, "Provider=SQLite")
             ? ""
             : "names no kind of reference database there is; write \"Provider=SQLite;\"";
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

// In the order of the first settings.
constexpr auto kSettings = std::to_array<Setting>({
    {"User", "Id", AnyText},
    {"User", "Region", AnyText},
    {"Folders", "Templates", Path},
    {"Folders", "Config", Path},
    {"Folders", "ReferenceDatabase", Path},
    {"Folders", "Printed", Path},
    {"Reference", "Provider", Provider},
    {"Printing", "Printer", AnyText},
    {"Printing", "WithoutAsking", YesOrNo},
    {"Preview", "DelayMilliseconds", Milliseconds},
    {"Preview", "LayoutSeconds", Seconds},
    {"DMVKorvadsk", "System\\DontPrint", YesOrNo},
});

}  // namespace

std::optional<int> WholeNumber(const std::string& text) {
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

const Setting* FindSetting(std::string_view section, std::string_view key) {
  const auto found = std::ranges::find_if(kSettings, [&](const Setting& setting) {
    return platform::EqualsIgnoringCase(setting.section, section) &&
           platform::EqualsIgnoringCase(setting.key, key);
  });
  return found == kSettings.end() ? nullptr : &*found;
}

std::string SettingName(std::string_view section, std::string_view key) {
  return "[" + std::string(section) + "] " + std::string(key);
}

std::string SettingsThereAre(std::string_view section) {
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

}  // namespace host
