#include "host/accounts.h"

#include <array>
#include <cerrno>
#include <system_error>

#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/file_access.h"
#include "platform/file_failure.h"

namespace host {
namespace {

using platform::Failure;
namespace fs = std::filesystem;

constexpr mode_t kSharedFile = 0660;
constexpr mode_t kSharedFolder = 02770;

gid_t GroupNamed(const std::string& name) {
  if (const group* known = getgrnam(name.c_str())) return known->gr_gid;
  throw Failure(Failure::Kind::kNotFound,
                "There is no group \"" + name + "\" on this machine. Make it first, or name another one.");
}

void Share(const fs::path& entry, gid_t group) {
  struct stat known = {};
  if (lstat(entry.c_str(), &known) != 0) return;  // gone meanwhile
  if (!S_ISDIR(known.st_mode) && !S_ISREG(known.st_mode)) return;
  const auto mode = S_ISDIR(known.st_mode) ? kSharedFolder : kSharedFile;
  if (known.st_gid == group && (known.st_mode & 07777U) == mode) return;
  if (lchown(entry.c_str(), static_cast<uid_t>(-1), group) == 0 && chmod(entry.c_str(), mode) == 0) return;
  const int number = errno;
  throw Failure(platform::FileFailure("could not be shared with the group", entry, number).kind(),
                "\"" + entry.string() + "\" could not be shared with the group (" +
                    std::generic_category().message(number) +
                    "). Do it as root, or as its owner who is a member of the group.");
}

}  // namespace

std::string OtherOwnerOf(const fs::path& file) {
  struct stat known = {};
  if (stat(file.c_str(), &known) != 0 || known.st_uid == geteuid()) return "";
  return platform::OwnerOf(file);
}

void ShareWithGroup(const fs::path& folder, const std::string& group) {
  const auto number = GroupNamed(group);
  Share(folder, number);
  try {
    for (const auto& entry : fs::recursive_directory_iterator(folder)) Share(entry.path(), number);
  } catch (const fs::filesystem_error& error) {
    throw platform::FileFailure("could not be read", error.path1(), error.code().value());
  }
}

}  // namespace host
