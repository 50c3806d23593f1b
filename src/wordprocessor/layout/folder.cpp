#include "wordprocessor/layout/folder.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <string_view>
#include <system_error>

#include "platform/file_access.h"
#include "platform/file_failure.h"
#include "platform/whole_file.h"

namespace wordprocessor {
namespace {

constexpr std::string_view kPrefix = "zemlo-layout-";

platform::Descriptor OpenFolder(const std::filesystem::path& folder) {
  return platform::Descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

bool IsOurs(const platform::Descriptor& folder) {
  struct stat known = {};
  return fstat(folder.number(), &known) == 0 && known.st_uid == geteuid();
}

void RemoveIfAbandoned(const std::filesystem::path& folder) {
  const auto lock = OpenFolder(folder);
  if (!lock || !IsOurs(lock) || flock(lock.number(), LOCK_EX | LOCK_NB) != 0) return;
  std::error_code ignored;
  std::filesystem::remove_all(folder, ignored);
}

}  // namespace

LayoutFolder::LayoutFolder(const std::filesystem::path& work_folder) {
  platform::MakeFolder(work_folder);
  while (!Take(work_folder)) {
  }
}

LayoutFolder::~LayoutFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

// Between its making and its locking another program may take the folder for abandoned; then the next one is
// ours.
bool LayoutFolder::Take(const std::filesystem::path& work_folder) {
  auto name = (std::filesystem::absolute(work_folder) / (std::string(kPrefix) + "XXXXXX")).string();
  if (mkdtemp(name.data()) == nullptr) throw platform::FileFailure("could not be made", name, errno);
  auto lock = OpenFolder(name);
  if (!lock || flock(lock.number(), LOCK_EX | LOCK_NB) != 0) return false;
  struct stat known = {};
  if (fstat(lock.number(), &known) != 0 || known.st_nlink == 0) return false;
  path_ = name;
  lock_ = std::move(lock);
  return true;
}

void LayoutFolder::RemoveLeftovers(const std::filesystem::path& work_folder) noexcept {
  std::error_code error;
  for (std::filesystem::directory_iterator entry(work_folder, error), end; !error && entry != end;
       entry.increment(error)) {
    if (entry->path().filename().string().starts_with(kPrefix)) RemoveIfAbandoned(entry->path());
  }
}

}  // namespace wordprocessor
