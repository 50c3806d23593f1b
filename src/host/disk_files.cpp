#include "host/disk_files.h"

#include <algorithm>
#include <system_error>

#include "platform/file_failure.h"
#include "platform/text.h"
#include "platform/whole_file.h"

namespace host {
namespace {

using platform::Failure;

}  // namespace

std::filesystem::path LocalPath(const std::string& path) {
  std::string local = path;
  std::ranges::replace(local, '\\', '/');
  return local;
}

std::optional<std::filesystem::path> FindFile(const std::string& path) {
  const auto wanted = LocalPath(path);
  std::error_code error;
  if (std::filesystem::is_regular_file(wanted, error)) return wanted;
  const auto name = wanted.filename().string();
  const auto folder = wanted.has_parent_path() ? wanted.parent_path() : std::filesystem::path(".");
  for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
    if (entry.is_regular_file(error) &&
        platform::EqualsIgnoringCase(entry.path().filename().string(), name)) {
      return entry.path();
    }
  }
  return std::nullopt;
}

bool DiskFiles::Exists(const std::string& path) const {
  return FindFile(path).has_value();
}

void DiskFiles::CopyFile(const std::string& from, const std::string& to) {
  const auto source = FindFile(from);
  if (!source) throw Failure(Failure::Kind::kNotFound, "The file \"" + from + "\" does not exist.");
  const auto target = FindFile(to).value_or(LocalPath(to));
  platform::CopyWholeFile(*source, target);
}

bool DiskFiles::DeleteFile(const std::string& path) {
  const auto file = FindFile(path);
  if (!file) return false;
  std::error_code error;
  const bool removed = std::filesystem::remove(*file, error);
  if (error) throw platform::FileFailure("could not be deleted", *file, error.value());
  return removed;
}

}  // namespace host
