#include "host/print_note_file.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "host/accounts.h"
#include "platform/file_access.h"
#include "platform/file_failure.h"
#include "platform/xml/xml.h"

namespace host {
namespace {

using platform::Failure;
using platform::PrintNote;
using platform::PrintStage;

struct Ending {
  PrintStage stage;
  const char* text;
};
constexpr auto kEndings = std::to_array<Ending>({
    {PrintStage::kHandingOver, ".handing-over"},
    {PrintStage::kPrinted, ".printed"},
    {PrintStage::kRecording, ".recording"},
});

std::string NameOf(const std::string& message_key, PrintStage stage) {
  for (const auto& ending : kEndings) {
    if (ending.stage == stage) return message_key + ending.text;
  }
  throw Failure(Failure::Kind::kInternal, "A letter's note has no such stage.");
}

std::optional<PrintStage> StageOf(const std::filesystem::path& file) {
  for (const auto& ending : kEndings) {
    if (file.extension() == ending.text) return ending.stage;
  }
  return std::nullopt;
}

[[noreturn]] void Fail(const std::string& what, const std::filesystem::path& file) {
  auto failure = platform::FileFailure("(the note of a letter that is printed) " + what, file, errno);
  const auto owner = OtherOwnerOf(file.parent_path());
  if (failure.kind() != Failure::Kind::kPermissionDenied || owner.empty()) throw failure;
  throw Failure(failure.kind(),
                failure.description() + " The folder belongs to user \"" + owner +
                    "\"; \"zemlo-letters init --group NAME\" shares a data folder with a group.");
}

/// What was renamed or removed in a folder outlasts a power cut, where its file system can promise that (some
/// network file systems cannot): a note that outlasts a killed program is no less of use.
void MakeLast(const std::filesystem::path& folder) {
  const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  fsync(descriptor);
  close(descriptor);
}

std::string TextOf(const PrintNote& note) {
  platform::XmlDocument document("letter");
  document.Root().SetAttribute("name", note.letter);
  for (const auto& [column, value] : note.record) {
    auto element = document.Root().AppendChild("column");
    element.SetAttribute("name", column);
    element.SetText(value);
  }
  return document.Root().Xml();
}

PrintNote NoteOf(const std::string& text) {
  const auto document = platform::XmlDocument::Parse(text).OrFail();
  PrintNote note;
  note.letter = document.Root().Attribute("name").value_or("");
  for (const auto& column : document.Root().Children()) {
    note.record.emplace_back(column.Attribute("name").value_or(""), column.Text());
  }
  return note;
}

std::string ReadAll(int descriptor, const std::filesystem::path& file) {
  std::string text;
  std::array<char, 16384> part{};
  for (;;) {
    const auto got = read(descriptor, part.data(), part.size());
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) Fail("could not be read", file);
    if (got == 0) return text;
    text.append(part.data(), static_cast<std::size_t>(got));
  }
}

void WriteAll(int descriptor, std::string_view text, const std::filesystem::path& file) {
  while (!text.empty()) {
    const auto written = write(descriptor, text.data(), text.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) Fail("could not be written", file);
    text.remove_prefix(static_cast<std::size_t>(written));
  }
  if (fsync(descriptor) != 0) Fail("could not be written", file);
}

/// What is no file may be waited for without end, or do something when it is opened.
void RequireFile(const struct stat& status, const std::filesystem::path& file) {
  if (S_ISREG(status.st_mode)) return;
  throw Failure(Failure::Kind::kDamaged,
                "\"" + file.string() +
                    "\" has the name of a letter's note and is no file. Look what it "
                    "is, and move it out of the folder.");
}

/// Opens the note for reading and writing, without waiting; -1 where it has just gone.
int OpenNote(const std::filesystem::path& file) {
  struct stat status {};
  if (stat(file.c_str(), &status) == 0) RequireFile(status, file);
  const int descriptor = open(file.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
  if (descriptor < 0 && errno != ENOENT) Fail("could not be read", file);
  return descriptor;
}

bool IsStillNamed(int descriptor, const std::filesystem::path& file) {
  struct stat open_file {};
  struct stat named_file {};
  return fstat(descriptor, &open_file) == 0 && stat(file.c_str(), &named_file) == 0 &&
         open_file.st_ino == named_file.st_ino && open_file.st_dev == named_file.st_dev;
}

}  // namespace

PrintNoteFile PrintNoteFile::Write(const std::filesystem::path& folder, PrintNote note) {
  platform::MakeFolder(folder);
  // Under a name that nobody takes for a note until it is whole, and locked.
  const auto part = folder / (note.message_key + ".part");
  const int descriptor = platform::OpenNewFile(part);
  if (descriptor < 0) Fail("could not be written", part);
  PrintNoteFile file(part, descriptor);
  file.note_ = std::move(note);
  try {
    if (flock(descriptor, LOCK_EX | LOCK_NB) != 0) Fail("could not be locked", part);
    WriteAll(descriptor, TextOf(file.note_), part);
    file.MoveTo(PrintStage::kHandingOver);
  } catch (const Failure&) {
    unlink(file.file_.c_str());
    throw;
  }
  return file;
}

std::optional<PrintNoteFile> PrintNoteFile::Take(const std::filesystem::path& file) {
  const auto stage = StageOf(file);
  if (!stage) return std::nullopt;
  const int descriptor = OpenNote(file);
  if (descriptor < 0) return std::nullopt;
  PrintNoteFile taken(file, descriptor);
  struct stat status {};
  if (fstat(descriptor, &status) == 0) RequireFile(status, file);  // another one may stand there by now
  if (flock(descriptor, LOCK_EX | LOCK_NB) != 0 || !IsStillNamed(descriptor, file)) return std::nullopt;
  taken.note_ = platform::While("reading the letter's note \"" + file.string() + "\"",
                                [&] { return NoteOf(ReadAll(descriptor, file)); });
  taken.note_.message_key = file.stem().string();
  taken.stage_ = *stage;
  return taken;
}

bool PrintNoteFile::IsClosed(const std::filesystem::path& file) {
  return StageOf(file) && faccessat(AT_FDCWD, file.c_str(), R_OK | W_OK, AT_EACCESS) != 0 && errno == EACCES;
}

PrintNoteFile::PrintNoteFile(PrintNoteFile&& other) noexcept
    : file_(std::move(other.file_)),
      descriptor_(std::exchange(other.descriptor_, -1)),
      note_(std::move(other.note_)),
      stage_(other.stage_) {}

PrintNoteFile& PrintNoteFile::operator=(PrintNoteFile&& other) noexcept {
  std::swap(file_, other.file_);
  std::swap(descriptor_, other.descriptor_);
  std::swap(note_, other.note_);
  std::swap(stage_, other.stage_);
  return *this;
}

PrintNoteFile::~PrintNoteFile() {
  if (descriptor_ >= 0) close(descriptor_);
}

void PrintNoteFile::MoveTo(PrintStage stage) {
  const auto target = file_.parent_path() / NameOf(note_.message_key, stage);
  if (rename(file_.c_str(), target.c_str()) != 0) Fail("could not be kept", file_);
  file_ = target;
  stage_ = stage;
  MakeLast(file_.parent_path());
}

void PrintNoteFile::Remove() {
  if (unlink(file_.c_str()) != 0 && errno != ENOENT) Fail("could not be removed", file_);
  MakeLast(file_.parent_path());
}

}  // namespace host
