#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "platform/parties/print_journal.h"

namespace host {

/// The note of one letter as a file, locked by the program that deals with it.
///
/// The file's name is the message key and, as its ending, how far the letter has come; each step is one
/// renaming that is on the disk when the operation returns. The lock goes with the program, however that
/// ends, and the file stays unless it was removed. Decision [note-stage].
class PrintNoteFile {
 public:
  /// Writes the note of a letter that is being handed over. Throws Failure naming the folder where it cannot.
  static PrintNoteFile Write(const std::filesystem::path& folder, platform::PrintNote note);
  /// The note of that file; nothing where another program deals with it or has just done so, or where the
  /// name is none of a note. Throws Failure kDamaged for a file that is no note, and for what is
  /// no file, such as a named pipe.
  static std::optional<PrintNoteFile> Take(const std::filesystem::path& file);

  /// Whether the file is a note that this user may not deal with.
  static bool IsClosed(const std::filesystem::path& file);

  PrintNoteFile(PrintNoteFile&& other) noexcept;
  PrintNoteFile& operator=(PrintNoteFile&& other) noexcept;
  ~PrintNoteFile();

  const platform::PrintNote& note() const { return note_; }
  platform::PrintStage stage() const { return stage_; }
  const std::filesystem::path& file() const { return file_; }
  void MoveTo(platform::PrintStage stage);
  void Remove();

 private:
  PrintNoteFile(std::filesystem::path file, int descriptor)
      : file_(std::move(file)), descriptor_(descriptor) {}

  std::filesystem::path file_;
  int descriptor_;  // holds the lock
  platform::PrintNote note_;
  platform::PrintStage stage_ = platform::PrintStage::kHandingOver;
};

}  // namespace host
