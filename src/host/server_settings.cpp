#include "host/server_settings.h"

#include <algorithm>
#include <array>
#include <system_error>

#include <unistd.h>

#include "host/known_settings.h"
#include "platform/agreed/rights.h"
#include "platform/file_access.h"
#include "platform/text.h"
#include "platform/whole_file.h"

namespace host {
namespace {

constexpr std::string_view kFirstServerSettings =
    R"(; Settings of the application server, for all users. Lines that start with ; are comments.
; The programs read this file when they start.

[Rights]
; USER=RIGHTS, separated by commas; the line * is for everybody without a line of their own.
; CustomerEdit        change customers
; CustomerAdd         add customers
; UpdateCustNotify    be told how many letters a corrected address lets go out
*=CustomerEdit, CustomerAdd, UpdateCustNotify

[AddressVerification]
; Program           a program of the office's own that verifies addresses, with its whole path
;                   (default: none, the street file in server/streets does)
; TimeOutSeconds    how long it may take for an address, from 1 to 60 (default: 5)
Program=
TimeOutSeconds=
)";

constexpr std::string_view kEverybody = "*";
constexpr auto kRights =
    std::to_array<std::string_view>({platform::right::kEditCustomer, platform::right::kAddCustomer,
                                     platform::right::kToldOfCorrectedLetters});

bool IsProgram(const std::filesystem::path& path) {
  std::error_code unknown;
  return path.is_absolute() && std::filesystem::is_regular_file(path, unknown) &&
         access(path.c_str(), X_OK) == 0;
}

bool IsRight(std::string_view name) {
  return std::ranges::any_of(
      kRights, [&](std::string_view right) { return platform::EqualsIgnoringCase(right, name); });
}

}  // namespace

ServerSettings::ServerSettings(const DataFolder& folder) : folder_(folder) {
  if (!platform::IsThere(folder_.ServerSettings())) return;
  const auto ini = IniFile::Read(folder_.ServerSettings());
  for (const auto& bad : ini.bad_lines)
    Complain(bad.line, "\"" + bad.text + "\" is no setting; write KEY=VALUE.");
  for (const auto& entry : ini.entries) Take(entry);
}

void ServerSettings::CreateFor(const DataFolder& folder) {
  if (!platform::IsThere(folder.ServerSettings()))
    platform::WriteWholeFile(folder.ServerSettings(), std::string(kFirstServerSettings));
}

bool ServerSettings::Holds(std::string_view user_id, std::string_view right) const {
  auto rights = rights_.find(platform::UpperCase(platform::Trim(user_id)));
  if (rights == rights_.end()) rights = rights_.find(std::string(kEverybody));
  return rights != rights_.end() && rights->second.contains(platform::UpperCase(right));
}

void ServerSettings::Complain(std::size_t line, const std::string& what) {
  faults_.push_back("\"" + folder_.ServerSettings().string() + "\", line " + std::to_string(line) + ": " +
                    what);
}

void ServerSettings::Take(const IniFile::Entry& entry) {
  if (platform::EqualsIgnoringCase(entry.section, "Rights")) return TakeRights(entry);
  if (platform::EqualsIgnoringCase(entry.section, "AddressVerification"))
    return TakeAddressVerification(entry);
  Complain(entry.line, "[" + entry.section + "] " + entry.key + " is no setting and counts for nothing.");
}

void ServerSettings::TakeRights(const IniFile::Entry& entry) {
  auto& rights = rights_[platform::UpperCase(entry.key)];
  std::string_view rest = entry.value;
  while (!rest.empty()) {
    const auto comma = std::min(rest.find(','), rest.size());
    const auto name = platform::Trim(rest.substr(0, comma));
    rest.remove_prefix(std::min(comma + 1, rest.size()));
    if (name.empty()) continue;
    if (IsRight(name))
      rights.insert(platform::UpperCase(name));
    else
      Complain(entry.line, platform::Quoted(name) +
                               " is no right; there are CustomerEdit, CustomerAdd and "
                               "UpdateCustNotify. It counts for nothing.");
  }
}

void ServerSettings::TakeAddressVerification(const IniFile::Entry& entry) {
  if (platform::EqualsIgnoringCase(entry.key, "Program")) {
    address_program_ = entry.value;
    if (entry.value.empty() || IsProgram(address_program_)) return;
    return Complain(entry.line,
                    "[AddressVerification] Program " + platform::Quoted(entry.value) +
                        " is no program that may be run; no address is verified. Write its whole path, "
                        "and let everybody run it.");
  }
  if (platform::EqualsIgnoringCase(entry.key, "TimeOutSeconds")) {
    if (entry.value.empty()) return;
    const auto seconds = WholeNumber(entry.value);
    if (seconds && *seconds >= 1 && *seconds <= 60) {
      address_time_out_ = std::chrono::seconds(*seconds);
      return;
    }
    return Complain(entry.line, "[AddressVerification] TimeOutSeconds " + platform::Quoted(entry.value) +
                                    " is no number from 1 to 60 and counts as not set.");
  }
  Complain(entry.line, "[AddressVerification] " + entry.key +
                           " is no setting and counts for nothing. There are Program and TimeOutSeconds.");
}

}  // namespace host
