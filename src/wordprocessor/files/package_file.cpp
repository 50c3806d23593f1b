#include "wordprocessor/files/package_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "platform/descriptor.h"
#include "platform/failure.h"
#include "platform/text.h"
#include "wordprocessor/files/package.h"

namespace wordprocessor {
namespace {

using platform::Failure;

std::string Quoted(const std::filesystem::path& file) {
  return platform::Quoted(file.string());
}

[[noreturn]] void FailReading(const std::filesystem::path& file, int error) {
  if (error == ENOENT || error == ENOTDIR) {
    throw Failure(Failure::Kind::kNotFound,
                  "There is no file " + Quoted(file) + ". Check the name and the folder.");
  }
  if (error == EACCES || error == EPERM) {
    throw Failure(Failure::Kind::kPermissionDenied,
                  "The file " + Quoted(file) + " may not be read. Ask for the right to read it.");
  }
  throw Failure(Failure::Kind::kUnavailable,
                "The file " + Quoted(file) + " cannot be read (" + std::strerror(error) + "). Try again.");
}

FileIdentity IdentityOf(const std::filesystem::path& file, const struct stat& status) {
  if (!S_ISREG(status.st_mode)) {
    throw Failure(Failure::Kind::kRefused, Quoted(file) + " is no file. Choose a .docx document.");
  }
  return {status.st_dev, status.st_ino, static_cast<std::uint64_t>(status.st_size),
          status.st_mtim.tv_sec * 1'000'000'000 + status.st_mtim.tv_nsec};
}

}  // namespace

FileIdentity FileIdentity::Of(const std::filesystem::path& file) {
  struct stat status;
  if (::stat(file.c_str(), &status) != 0) FailReading(file, errno);
  return IdentityOf(file, status);
}

FileContent ReadFile(const std::filesystem::path& file) {
  // Opening must not wait for the writer of a pipe.
  const platform::Descriptor descriptor(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status;
  if (!descriptor || ::fstat(descriptor.number(), &status) != 0) FailReading(file, errno);
  FileContent content;
  content.identity = IdentityOf(file, status);
  if (content.identity.size > kPackageLimits.total_size) {
    throw Failure(Failure::Kind::kRefused,
                  Quoted(file) + " is far larger than a letter. Choose another document.");
  }
  content.bytes.resize(content.identity.size);
  std::size_t filled = 0;
  while (filled < content.bytes.size()) {
    const auto read =
        ::read(descriptor.number(), content.bytes.data() + filled, content.bytes.size() - filled);
    if (read < 0 && errno == EINTR) continue;
    if (read < 0) FailReading(file, errno);
    if (read == 0) break;
    filled += static_cast<std::size_t>(read);
  }
  content.bytes.resize(filled);
  return content;
}

}  // namespace wordprocessor
