#include "server/storage/database_file.h"

#include <cerrno>
#include <string>
#include <system_error>

#include "platform/file_access.h"
#include "platform/file_failure.h"

namespace server {
namespace {

using platform::Failure;
namespace fs = std::filesystem;

}  // namespace

void RequireReadable(const fs::path& file) {
  const int refused = platform::WhyNot(platform::Use::kReading, file);
  if (refused == ENOENT) {
    throw Failure(Failure::Kind::kNotFound, "The server's database \"" + file.string() +
                                                "\" is missing. Make the disk it lies on available again, or "
                                                "restore it from a backup.");
  }
  if (refused != 0) throw platform::FileFailure("could not be read", file, refused);
  std::error_code unknown;
  if (fs::file_size(file, unknown) == 0) throw DamagedData(file);
}

bool MayChange(const fs::path& file) {
  return platform::WhyNot(platform::Use::kWriting, file) == 0 &&
         platform::WhyNot(platform::Use::kWriting, file.parent_path()) == 0;
}

Failure NoRightToChange(const fs::path& file) {
  const auto name = "The server's database \"" + file.filename().string() + "\" in the folder \"" +
                    file.parent_path().string() + "\" ";
  if (platform::WhyNot(platform::Use::kWriting, file) == EROFS) {
    return {Failure::Kind::kPermissionDenied,
            name + "lies on a disk that is mounted read only. Make that disk writable and try again."};
  }
  return {Failure::Kind::kPermissionDenied, name + "belongs to \"" + platform::OwnerOf(file) + "\", and \"" +
                                                platform::OwnAccount() +
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
