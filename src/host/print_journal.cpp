#include "host/print_journal.h"

#include <algorithm>
#include <chrono>
#include <system_error>
#include <utility>

#include "host/accounts.h"
#include "platform/failure.h"
#include "platform/identity.h"
#include "platform/parties/trap.h"

namespace host {

using platform::Failure;
using platform::PrintStage;

namespace {

// Longer than a note takes to be written.
constexpr std::chrono::minutes kHalfWritten{1};

}  // namespace

void PrintJournal::Begin(const std::string& context) {
  // One that was accepted and never recorded waits for the next start.
  if (printing_) next_start_.emplace(printing_->note().message_key, std::move(*printing_));
  printing_.reset();
  const auto note = maker_ ? maker_(context) : std::nullopt;
  if (note) printing_ = PrintNoteFile::Write(folder_, *note);
}

void PrintJournal::Accept() {
  if (printing_) printing_->MoveTo(PrintStage::kPrinted);
}

void PrintJournal::Abandon() {
  if (auto abandoned = std::exchange(printing_, std::nullopt)) abandoned->Remove();
}

std::string PrintJournal::Record() {
  if (!printing_) return "";
  auto key = printing_->note().message_key;
  auto& note = recording_.emplace(key, std::move(*printing_)).first->second;
  printing_.reset();
  // The record goes out under the note's own key in any case: under another one it could be stored twice.
  platform::Trap(errors_, "PrintJournal.Record", [&] { note.MoveTo(PrintStage::kRecording); });
  return key;
}

std::vector<std::string> PrintJournal::Recording() const {
  std::vector<std::string> keys;
  for (const auto& [key, note] : recording_) keys.push_back(key);
  return keys;
}

void PrintJournal::Settle(const std::string& message_key, Outcome outcome) {
  auto note = TakeFrom(recording_, message_key);
  if (outcome == Outcome::kRecorded) return note.Remove();
  auto& kept = next_start_.emplace(message_key, std::move(note)).first->second;
  if (outcome == Outcome::kRefused) kept.MoveTo(PrintStage::kPrinted);
}

std::vector<platform::PrintJournal::Left> PrintJournal::LeftBehind() {
  std::vector<Left> left;
  closed_.clear();
  for (const auto& file : NoteFiles()) {
    platform::Trap(errors_, "PrintJournal.LeftBehind", [&] {
      RemoveHalfWritten(file);
      Take(file, left);
    });
  }
  return left;
}

void PrintJournal::Take(const std::filesystem::path& file, std::vector<Left>& left) {
  if (PrintNoteFile::IsClosed(file)) {
    ++closed_[OtherOwnerOf(file)];
    return;
  }
  auto note = PrintNoteFile::Take(file);
  if (!note) return;
  left.push_back({note->note(), note->stage(), OtherOwnerOf(file)});
  left_.emplace(note->note().message_key, std::move(*note));
}

std::vector<platform::PrintJournal::Closed> PrintJournal::ClosedNotes() const {
  std::vector<Closed> notes;
  for (const auto& [user, letters] : closed_) notes.push_back({user, letters});
  return notes;
}

std::vector<std::filesystem::path> PrintJournal::NoteFiles() {
  std::vector<std::pair<std::filesystem::file_time_type, std::filesystem::path>> files;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(folder_, error)) {
    std::error_code gone;
    files.emplace_back(entry.last_write_time(gone), entry.path());
  }
  if (error == std::errc::permission_denied) {
    closed_.emplace(OtherOwnerOf(folder_), 0);
  } else if (error && error != std::errc::no_such_file_or_directory) {
    errors_.ReportError("The notes of printed letters in \"" + folder_.string() + "\" cannot be read (" +
                            error.message() + "); letters that were not recorded stay unnamed.",
                        platform::kComponentTitle, "PrintJournal.LeftBehind");
  }
  std::ranges::sort(files);
  std::vector<std::filesystem::path> paths;
  paths.reserve(files.size());
  for (auto& [time, path] : files) paths.push_back(std::move(path));
  return paths;
}

void PrintJournal::RemoveHalfWritten(const std::filesystem::path& file) const {
  std::error_code error;
  if (file.extension() != ".part") return;
  const auto written = std::filesystem::last_write_time(file, error);
  if (error || std::filesystem::file_time_type::clock::now() - written < kHalfWritten) return;
  std::filesystem::remove(file, error);
}

void PrintJournal::RecordAgain(const std::string& message_key) {
  auto& note = recording_.emplace(message_key, TakeFrom(left_, message_key)).first->second;
  note.MoveTo(PrintStage::kRecording);
}

void PrintJournal::Forget(const std::string& message_key) {
  TakeFrom(left_, message_key).Remove();
}

void PrintJournal::LeaveForNextStart(const std::string& message_key) {
  next_start_.emplace(message_key, TakeFrom(left_, message_key));
}

PrintNoteFile PrintJournal::TakeFrom(std::map<std::string, PrintNoteFile>& notes,
                                     const std::string& message_key) const {
  auto node = notes.extract(message_key);
  if (!node.empty()) return std::move(node.mapped());
  throw Failure(Failure::Kind::kNotFound, "There is no note of the letter \"" + message_key + "\".");
}

}  // namespace host
