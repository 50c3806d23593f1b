#include "wordprocessor/docx_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>

#include "platform/failure.h"
#include "platform/text.h"
#include "wordprocessor/docx_package.h"

namespace wordprocessor {
namespace {

using platform::Failure;

class Descriptor {
 public:
  explicit Descriptor(int fd) : fd_(fd) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (fd_ >= 0) ::close(fd_);
  }

  int get() const { return fd_; }
  /// Some file systems tell only here that there was no room.
  bool Close() { return ::close(std::exchange(fd_, -1)) == 0; }

 private:
  int fd_;
};

/// Removes the file that did not get its name.
class Unfinished {
 public:
  explicit Unfinished(std::string path) : path_(std::move(path)) {}
  Unfinished(const Unfinished&) = delete;
  Unfinished& operator=(const Unfinished&) = delete;
  ~Unfinished() {
    if (!path_.empty()) ::unlink(path_.c_str());
  }

  const std::string& path() const { return path_; }
  void Finished() { path_.clear(); }

 private:
  std::string path_;
};

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

[[noreturn]] void FailWriting(const std::filesystem::path& file, int error) {
  const bool denied = error == EACCES || error == EPERM || error == EROFS;
  const auto advice = denied            ? " Choose another folder, or ask for the right to write there."
                      : error == ENOSPC ? " Make room and save again."
                      : error == ENOENT ? " Check the folder."
                                        : " Try again.";
  throw Failure(denied ? Failure::Kind::kPermissionDenied : Failure::Kind::kUnavailable,
                "The file " + Quoted(file) + " cannot be written (" + std::strerror(error) + ")." + advice);
}

FileIdentity IdentityOf(const std::filesystem::path& file, const struct stat& status) {
  if (!S_ISREG(status.st_mode)) {
    throw Failure(Failure::Kind::kRefused, Quoted(file) + " is no file. Choose a .docx document.");
  }
  return {status.st_dev, status.st_ino, static_cast<std::uint64_t>(status.st_size),
          status.st_mtim.tv_sec * 1'000'000'000 + status.st_mtim.tv_nsec};
}

std::string TemporaryName(const std::filesystem::path& file) {
  static std::atomic<unsigned> number = 0;
  const auto name = ".zemlo-" + std::to_string(::getpid()) + "-" + std::to_string(++number) + ".tmp";
  return (file.parent_path() / name).string();
}

void WriteAll(int fd, std::string_view bytes, const std::filesystem::path& file) {
  while (!bytes.empty()) {
    const auto written = ::write(fd, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) FailWriting(file, errno);
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

}  // namespace

FileIdentity FileIdentity::Of(const std::filesystem::path& file) {
  struct stat status;
  if (::stat(file.c_str(), &status) != 0) FailReading(file, errno);
  return IdentityOf(file, status);
}

FileContent ReadFile(const std::filesystem::path& file) {
  // Opening must not wait for the writer of a pipe.
  const Descriptor descriptor(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status;
  if (descriptor.get() < 0 || ::fstat(descriptor.get(), &status) != 0) FailReading(file, errno);
  FileContent content;
  content.identity = IdentityOf(file, status);
  if (content.identity.size > kPackageLimits.total_size) {
    throw Failure(Failure::Kind::kRefused,
                  Quoted(file) + " is far larger than a letter. Choose another document.");
  }
  content.bytes.resize(content.identity.size);
  std::size_t filled = 0;
  while (filled < content.bytes.size()) {
    const auto read = ::read(descriptor.get(), content.bytes.data() + filled, content.bytes.size() - filled);
    if (read < 0 && errno == EINTR) continue;
    if (read < 0) FailReading(file, errno);
    if (read == 0) break;
    filled += static_cast<std::size_t>(read);
  }
  content.bytes.resize(filled);
  return content;
}

void ReplaceFile(const std::filesystem::path& file, std::string_view bytes) {
  Unfinished temporary(TemporaryName(file));
  Descriptor descriptor(::open(temporary.path().c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
  if (descriptor.get() < 0) {
    const int error = errno;
    temporary.Finished();
    FailWriting(file, error);
  }
  WriteAll(descriptor.get(), bytes, file);
  if (!descriptor.Close()) FailWriting(file, errno);
  if (std::rename(temporary.path().c_str(), file.c_str()) != 0) FailWriting(file, errno);
  temporary.Finished();
}

}  // namespace wordprocessor
