#include "wordprocessor/print_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>

#include "wordprocessor/layout_descriptor.h"

namespace wordprocessor {
namespace {

std::filesystem::path FolderOf(const std::filesystem::path& file) {
  return file.has_parent_path() ? file.parent_path() : ".";
}

Descriptor CreateFile(const std::filesystem::path& file) {
  return Descriptor(open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
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

/// A file being written under a hidden name beside the one it is to have; gone with the object unless it got
/// it.
class FileInTheMaking {
 public:
  explicit FileInTheMaking(const std::filesystem::path& file) : file_(file) {
    static std::atomic<unsigned> count = 0;
    hidden_ =
        FolderOf(file) / (".zemlo-" + std::to_string(getpid()) + "-" + std::to_string(++count) + ".part");
    open_ = CreateFile(hidden_);
    if (!open_) Fail();
  }
  FileInTheMaking(const FileInTheMaking&) = delete;
  FileInTheMaking& operator=(const FileInTheMaking&) = delete;
  ~FileInTheMaking() {
    if (!hidden_.empty()) unlink(hidden_.c_str());
  }

  void Write(std::string_view content) {
    if (!WriteContent(open_, content) || fsync(open_.number()) != 0 || !open_.Close()) Fail();
  }

  void TakeNameReplacing() {
    if (rename(hidden_.c_str(), file_.c_str()) != 0) Fail();
    hidden_.clear();
    MakeNameLast();
  }

  bool TakeFreeName() {
    if (link(hidden_.c_str(), file_.c_str()) == 0) {
      MakeNameLast();
      return true;
    }
    if (errno == EEXIST) return false;
    return ReserveAndReplace();
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
    MakeNameLast();
    return true;
  }

  void MakeNameLast() {
    const Descriptor folder(open(FolderOf(file_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    // A folder that cannot be synced (some network file systems) is no reason to say the file is not there.
    if (folder) fsync(folder.number());
  }

  [[noreturn]] void Fail() const { throw FileFailure("could not be written", file_, errno); }

  const std::filesystem::path file_;
  std::filesystem::path hidden_;
  Descriptor open_;
};

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
  making.Write(content);
  return making.TakeFreeName();
}

void MoveWholeFile(const std::filesystem::path& from, const std::filesystem::path& to) {
  if (rename(from.c_str(), to.c_str()) == 0) return;
  if (errno != EXDEV) throw FileFailure("could not be written", to, errno);
  WriteWholeFile(to, ReadWholeFile(from));
  unlink(from.c_str());
}

}  // namespace wordprocessor
