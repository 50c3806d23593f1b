#include "platform/file_access.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <vector>

#include "platform/file_failure.h"

namespace platform {
namespace {

namespace fs = std::filesystem;

constexpr mode_t kOwnersFile = 0600;
constexpr mode_t kSharedFile = 0660;
constexpr mode_t kOwnersFolder = 0700;
constexpr mode_t kSharedFolder = 02770;

fs::path FolderOf(const fs::path& file) {
  return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

bool IsSharedFolder(const struct stat& folder) {
  return S_ISDIR(folder.st_mode) && (folder.st_mode & S_ISGID) != 0 && (folder.st_mode & S_IWGRP) != 0;
}

/// As the folder `above` it says. What fails here leaves the file to its owner, or to the file system's ways.
void Protect(int made, const fs::path& above) {
  struct stat folder = {};
  struct stat known = {};
  if (stat(above.c_str(), &folder) != 0 || fstat(made, &known) != 0) return;
  if (geteuid() == 0 && known.st_uid == 0 && folder.st_uid != 0) {
    if (fchown(made, folder.st_uid, folder.st_gid) != 0) return;
  } else if (known.st_uid != geteuid()) {
    return;
  }
  const bool shared = IsSharedFolder(folder);
  const auto mode = S_ISDIR(known.st_mode) ? (shared ? kSharedFolder : kOwnersFolder)
                                           : (shared ? kSharedFile : kOwnersFile);
  fchmod(made, mode);
}

/// From the top down.
std::vector<fs::path> Missing(const fs::path& folder) {
  std::vector<fs::path> missing;
  std::error_code unreachable;
  for (auto above = folder; !above.empty() && !fs::exists(above, unreachable); above = above.parent_path()) {
    missing.insert(missing.begin(), above);
  }
  return missing;
}

std::string AccountName(uid_t number) {
  const auto* const account = getpwuid(number);
  return account == nullptr ? std::to_string(number) : account->pw_name;
}

}  // namespace

bool IsShared(const fs::path& folder) {
  struct stat known = {};
  return stat(folder.c_str(), &known) == 0 && IsSharedFolder(known);
}

bool IsThere(const fs::path& path) {
  std::error_code unknown;
  const auto status = fs::status(path, unknown);
  if (fs::status_known(status)) return fs::exists(status);
  throw FileFailure("could not be looked for", path, unknown.value());
}

int WhyNot(Use use, const fs::path& path) {
  const int mode = use == Use::kReading ? R_OK : W_OK;
  return faccessat(AT_FDCWD, path.c_str(), mode, AT_EACCESS) == 0 ? 0 : errno;
}

std::string OwnerOf(const fs::path& path) {
  struct stat known = {};
  return stat(path.c_str(), &known) == 0 ? AccountName(known.st_uid) : "?";
}

std::string OwnAccount() {
  return AccountName(geteuid());
}

int OpenNewFile(const fs::path& file) {
  const int made = open(file.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, kOwnersFile);
  if (made >= 0) Protect(made, FolderOf(file));
  return made;
}

void MakeFile(const fs::path& file) {
  const int made = OpenNewFile(file);
  if (made < 0 && errno != EEXIST) throw FileFailure("could not be made", file, errno);
  if (made >= 0) close(made);
}

void Protect(const fs::path& file) noexcept {
  // Neither a link's target nor the writer of a pipe is meant.
  const int made = open(file.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
  if (made < 0) return;
  Protect(made, FolderOf(file));
  close(made);
}

void MakeFolder(const fs::path& folder) {
  const auto whole = fs::absolute(folder / "").parent_path().lexically_normal();
  for (const auto& missing : Missing(whole)) {
    if (mkdir(missing.c_str(), kOwnersFolder) == 0) {
      Protect(missing);
    } else if (errno != EEXIST) {
      throw FolderFailure("could not be made", missing, errno);
    }
  }
  std::error_code unknown;
  if (fs::is_directory(whole, unknown)) return;
  throw FolderFailure("could not be made", whole, unknown ? unknown.value() : ENOTDIR);
}

}  // namespace platform
