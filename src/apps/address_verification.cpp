#include "apps/address_verification.h"

#include <system_error>

#include "platform/failure.h"
#include "platform/text.h"
#include "platform/whole_file.h"
#include "postal/program_verifier.h"
#include "postal/street_file.h"
#include "postal/street_file_verifier.h"
#include "server/storage/server_folders.h"

namespace apps {
namespace {

namespace fs = std::filesystem;

/// Size and time of change of both tables; "" where one is missing.
std::string StateOf(const fs::path& streets) {
  std::string state;
  for (const auto& file :
       {postal::StreetFile::CitiesFile(streets), postal::StreetFile::RangesFile(streets)}) {
    std::error_code error;
    const auto size = fs::file_size(file, error);
    const auto time = fs::last_write_time(file, error);
    if (error) return "";
    state += std::to_string(size) + " " + std::to_string(time.time_since_epoch().count()) + "\n";
  }
  return state;
}

/// The file that keeps the state in which the tables were found right: reading the demo's takes 50 ms, an
/// office's more, and every command starts with it.
fs::path CheckedFile(const fs::path& streets) {
  return streets / "checked.txt";
}

bool IsChecked(const fs::path& streets, const std::string& state) {
  try {
    return !state.empty() && platform::ReadWholeFile(CheckedFile(streets)) == state;
  } catch (const platform::Failure&) {
    return false;
  }
}

void RememberChecked(const fs::path& streets, const std::string& state) {
  try {
    platform::ReplaceFile(CheckedFile(streets), state);
  } catch (const platform::Failure&) {
    // Who may not write there checks once more.
  }
}

}  // namespace

std::unique_ptr<platform::AddressVerifier> MakeAddressVerifier(const host::DataFolder& folder,
                                                               const host::ServerSettings& settings) {
  if (!settings.AddressProgram().empty())
    return std::make_unique<postal::ProgramVerifier>(settings.AddressProgram(), settings.AddressTimeOut());
  return std::make_unique<postal::StreetFileVerifier>(server::StreetFolder(folder.root()));
}

std::vector<std::string> AddressFaults(const host::DataFolder& folder, const host::ServerSettings& settings,
                                       Occasion occasion) {
  if (!settings.AddressProgram().empty()) return {};
  const auto streets = server::StreetFolder(folder.root());
  const auto state = StateOf(streets);
  if (occasion == Occasion::kStart && (state.empty() || IsChecked(streets, state))) return {};
  try {
    const bool is_empty = postal::StreetFile::Read(streets).IsEmpty();
    RememberChecked(streets, state);
    if (!is_empty || occasion == Occasion::kStart) return {};
    return {
        "The street file in " + platform::Quoted(streets.string()) +
        " has no address, so that no address passes its verification. Put the office's own there, or name a "
        "program in server.ini."};
  } catch (const platform::Failure& failure) {
    return {failure.description()};
  }
}

}  // namespace apps
