#include "platform/whole_file.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <memory>

#include "platform/descriptor.h"
#include "platform/file_access.h"
#include "platform/file_failure.h"

namespace platform {
namespace {

std::filesystem::path PlaceOf(const std::filesystem::path& file) {
  return file.has_parent_path() ? file.parent_path() : ".";
}

Descriptor CreateFile(const std::filesystem::path& file) {
  return Descriptor(OpenNewFile(file));
}

/// False with errno set.
bool WriteContent(const Descriptor& open_file, std::string_view content) {
  while (!content.empty()) {
    const auto count = write(open_file.number(), content.data(), content.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return false;
    content.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

constexpr std::string_view kHiddenPrefix = ".zemlo-";
constexpr std::string_view kHiddenEnding = ".part";

std::filesystem::path NextHiddenName(const std::filesystem::path& folder) {
  static std::atomic<unsigned> count = 0;
  return folder / (std::string(kHiddenPrefix) + std::to_string(getpid()) + "-" + std::to_string(++count) +
                   std::string(kHiddenEnding));
}

/// False where another program has taken the file for abandoned; it is gone then, or about to go.
bool LockNewFile(const Descriptor& file) {
  // A file system without locks has nobody who removes what he cannot lock.
  if (flock(file.number(), LOCK_EX | LOCK_NB) != 0) return errno != EWOULDBLOCK;
  struct stat known = {};
  return fstat(file.number(), &known) != 0 || known.st_nlink != 0;
}

void RemoveIfUnfinished(const std::filesystem::path& file) {
  // Some network file systems lock only what may be written.
  const Descriptor left(open(file.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  if (left && flock(left.number(), LOCK_EX | LOCK_NB) == 0) unlink(file.c_str());
}

/// A file being written under a hidden name beside the one it is to have; gone with the object unless it got
/// it. It is locked from its making to its end, so that nobody takes it for one left behind.
class FileInTheMaking {
 public:
  explicit FileInTheMaking(const std::filesystem::path& file) : file_(file) {
    do {
      hidden_ = NextHiddenName(PlaceOf(file));
      open_ = CreateFile(hidden_);
      // A number that was another program's before it was this one's.
      if (!open_ && errno != EEXIST) Fail();
    } while (!open_ || !LockNewFile(open_));
  }
  FileInTheMaking(const FileInTheMaking&) = delete;
  FileInTheMaking& operator=(const FileInTheMaking&) = delete;
  ~FileInTheMaking() {
    if (!hidden_.empty()) unlink(hidden_.c_str());
  }

  void WriteForGood(std::string_view content) {
    if (!WriteContent(open_, content) || fsync(open_.number()) != 0) Fail();
  }

  void Write(std::string_view content) {
    if (!WriteContent(open_, content)) Fail();
    // Some file systems tell only at a closing that there was no room; the lock stays with the other one.
    if (!Descriptor(dup(open_.number())).Close()) Fail();
  }

  void TakeNameReplacing() {
    if (rename(hidden_.c_str(), file_.c_str()) != 0) Fail();
    hidden_.clear();
  }

  bool TakeFreeName() {
    if (link(hidden_.c_str(), file_.c_str()) == 0) return true;
    if (errno == EEXIST) return false;
    return ReserveAndReplace();
  }

  void MakeNameLast() const {
    const Descriptor folder(open(PlaceOf(file_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    // A folder that cannot be synced (some network file systems) is no reason to say the file is not there.
    if (folder) fsync(folder.number());
  }

 private:
  /// For file systems that know no links: takes the name with an empty file and replaces that.
  bool ReserveAndReplace() {
    const auto reserved = CreateFile(file_);
    if (!reserved && errno == EEXIST) return false;
    if (!reserved) Fail();
    if (rename(hidden_.c_str(), file_.c_str()) != 0) {
      const int number = errno;
      unlink(file_.c_str());
      throw FileFailure("could not be written", file_, number);
    }
    hidden_.clear();
    return true;
  }

  [[noreturn]] void Fail() const { throw FileFailure("could not be written", file_, errno); }

  const std::filesystem::path file_;
  std::filesystem::path hidden_;
  Descriptor open_;
};

/// Also behind a link, as /dev/stdout is one.
bool IsDeviceOrPipe(const std::filesystem::path& file) {
  struct stat known = {};
  return stat(file.c_str(), &known) == 0 && !S_ISREG(known.st_mode) && !S_ISDIR(known.st_mode);
}

void WriteInto(const std::filesystem::path& file, std::string_view content) {
  Descriptor into(open(file.c_str(), O_WRONLY | O_CLOEXEC));
  if (into && WriteContent(into, content) && into.Close()) return;
  throw FileFailure("could not be written", file, errno);
}

}  // namespace

std::string ReadWholeFile(const std::filesystem::path& file) {
  const Descriptor source(open(file.c_str(), O_RDONLY | O_CLOEXEC));
  if (!source) throw FileFailure("could not be read", file, errno);
  std::string content;
  struct stat known = {};
  if (fstat(source.number(), &known) == 0 && known.st_size > 0)
    content.reserve(static_cast<std::size_t>(known.st_size));
  std::array<char, std::size_t{64} * 1024> piece;
  for (;;) {
    const auto count = read(source.number(), piece.data(), piece.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) throw FileFailure("could not be read", file, errno);
    if (count == 0) return content;
    content.append(piece.data(), static_cast<std::size_t>(count));
  }
}

void WriteWholeFile(const std::filesystem::path& file, std::string_view content) {
  if (IsDeviceOrPipe(file)) return WriteInto(file, content);
  FileInTheMaking making(file);
  making.WriteForGood(content);
  making.TakeNameReplacing();
  making.MakeNameLast();
}

void ReplaceFile(const std::filesystem::path& file, std::string_view content) {
  if (IsDeviceOrPipe(file)) return WriteInto(file, content);
  FileInTheMaking making(file);
  making.Write(content);
  making.TakeNameReplacing();
}

void WriteScratchFile(const std::filesystem::path& file, std::string_view content) {
  auto scratch = CreateFile(file);
  if (scratch && WriteContent(scratch, content) && scratch.Close()) return;
  throw FileFailure("could not be written", file, errno);
}

bool WriteNewFile(const std::filesystem::path& file, std::string_view content) {
  FileInTheMaking making(file);
  making.WriteForGood(content);
  if (!making.TakeFreeName()) return false;
  making.MakeNameLast();
  return true;
}

void MoveWholeFile(const std::filesystem::path& from, const std::filesystem::path& to) {
  // A file that is moved keeps its group; in a shared folder it has to be the folder's.
  if (!IsShared(PlaceOf(to)) && !IsDeviceOrPipe(to)) {
    Protect(from);
    if (rename(from.c_str(), to.c_str()) == 0) return Protect(to);
    if (errno != EXDEV) throw FileFailure("could not be written", to, errno);
  }
  ReplaceFile(to, ReadWholeFile(from));
  unlink(from.c_str());
}

void CopyWholeFile(const std::filesystem::path& from, const std::filesystem::path& to,
                   const ContentCheck& check) {
  const auto content = ReadWholeFile(from);
  if (check) check(content, from.string());
  WriteWholeFile(to, content);
}

void RemoveUnfinishedFiles(const std::filesystem::path& folder) noexcept {
  // A folder of printed letters holds those of years, and every start of a program reads it: only names are
  // read.
  const std::unique_ptr<DIR, int (*)(DIR*)> names(opendir(folder.c_str()), closedir);
  while (const auto* entry = names ? readdir(names.get()) : nullptr) {
    const std::string_view name = entry->d_name;
    if (name.starts_with(kHiddenPrefix) && name.ends_with(kHiddenEnding)) RemoveIfUnfinished(folder / name);
  }
}

}  // namespace platform
