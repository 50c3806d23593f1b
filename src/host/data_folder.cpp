#include "host/data_folder.h"

#include <cstdlib>

#include <pwd.h>
#include <unistd.h>

#include "platform/failure.h"
#include "platform/file_access.h"

namespace host {
namespace {

using platform::Failure;

std::filesystem::path HomeDirectory() {
  if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0') return home;
  if (const passwd* account = getpwuid(getuid()); account != nullptr && account->pw_dir != nullptr) {
    return account->pw_dir;
  }
  return {};
}

}  // namespace

DataFolder DataFolder::OfUser() {
  constexpr auto kName = "zemlo-correspondence";
  // The XDG base directory rules (version 0.8): a relative path in the variable is to be ignored.
  if (const char* xdg = std::getenv("XDG_DATA_HOME"); xdg != nullptr && *xdg == '/') {
    return DataFolder(std::filesystem::path(xdg) / kName);
  }
  const auto home = HomeDirectory();
  if (home.empty()) {
    throw Failure(Failure::Kind::kNotFound,
                  "This account has no home directory. Name a data folder with --data DIR.");
  }
  return DataFolder(home / ".local" / "share" / kName);
}

bool DataFolder::IsNew() const {
  std::error_code error;
  if (std::filesystem::status(root_, error).type() == std::filesystem::file_type::not_found) return true;
  for (const auto& entry : std::filesystem::directory_iterator(root_, error)) {
    const auto name = entry.path().filename();
    if (name != "lost+found" && name != "office.txt.part") return false;
  }
  return !error;  // a folder that cannot be looked into may hold anything
}

bool DataFolder::IsPrepared() const {
  return platform::IsThere(Settings());
}

void DataFolder::Create() const {
  for (const auto& folder : {root_, Templates(), Printed(), Unrecorded(), Config(), Work()}) {
    try {
      platform::MakeFolder(folder);
    } catch (const Failure& failure) {
      throw Failure(failure.kind(), failure.description() + " --data DIR names another data folder.");
    }
  }
}

}  // namespace host
