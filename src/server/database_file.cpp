#include "server/database_file.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <system_error>

#include "platform/file_failure.h"

namespace server {
namespace {

using platform::Failure;
namespace fs = std::filesystem;

bool MayUse(const fs::path& path, int how) {
  return faccessat(AT_FDCWD, path.c_str(), how, AT_EACCESS) == 0;
}

std::string AccountName(uid_t number) {
  const auto* const account = getpwuid(number);
  return account == nullptr ? std::to_string(number) : account->pw_name;
}

}  // namespace

void RequireReadable(const fs::path& file) {
  if (!MayUse(file, R_OK)) {
    if (errno != ENOENT) throw platform::FileFailure("could not be read", file, errno);
    throw Failure(Failure::Kind::kNotFound, "The server's database \"" + file.string() +
                                                "\" is missing. Make the disk it lies on available again, or "
                                                "restore it from a backup.");
  }
  std::error_code unknown;
  if (fs::file_size(file, unknown) == 0) throw DamagedData(file);
}

bool MayChange(const fs::path& file) {
  return MayUse(file, W_OK) && MayUse(file.parent_path(), W_OK | X_OK);
}

Failure NoRightToChange(const fs::path& file) {
  const auto name = "The server's database \"" + file.filename().string() + "\" in the folder \"" +
                    file.parent_path().string() + "\" ";
  if (!MayUse(file, W_OK) && errno == EROFS) {
    return {Failure::Kind::kPermissionDenied,
            name + "lies on a disk that is mounted read only. Make that disk writable and try again."};
  }
  struct stat known = {};
  const auto owner = stat(file.c_str(), &known) == 0 ? AccountName(known.st_uid) : "?";
  return {Failure::Kind::kPermissionDenied, name + "belongs to \"" + owner + "\", and \"" +
                                                AccountName(geteuid()) +
                                                "\" has no right to change it. Ask for the right to write to "
                                                "that file and folder."};
}

Failure DamagedData(const fs::path& file) {
  return {Failure::Kind::kDamaged,
          "The server's database \"" + file.string() + "\" is damaged. Put it back from a backup."};
}

FileStamp StampOf(const fs::path& file) noexcept {
  std::error_code missing;
  const auto time = fs::last_write_time(file, missing);
  if (missing) return {};
  const auto size = fs::file_size(file, missing);
  return {.time = time, .size = size};
}

}  // namespace server
