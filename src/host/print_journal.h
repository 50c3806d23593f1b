#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "host/print_note_file.h"
#include "platform/parties/error_reporter.h"
#include "platform/parties/print_journal.h"

namespace host {

/// The notes of printed letters as files of one folder, which several programs may share.
class PrintJournal : public platform::PrintJournal {
 public:
  /// `folder` is made with the first note. `errors` outlives the journal.
  PrintJournal(std::filesystem::path folder, platform::ErrorReporter& errors)
      : folder_(std::move(folder)), errors_(errors) {}

  void Expect(NoteMaker maker) override { maker_ = std::move(maker); }
  void Begin(const std::string& context) override;
  void Accept() override;
  void Abandon() override;
  std::string Record() override;
  std::vector<std::string> Recording() const override;
  void Settle(const std::string& message_key, Outcome outcome) override;
  /// A file that is damaged is reported and stays where it is; one that is another user's alone is not.
  std::vector<Left> LeftBehind() override;
  std::vector<Closed> ClosedNotes() const override;
  void RecordAgain(const std::string& message_key) override;
  void Forget(const std::string& message_key) override;
  void LeaveForNextStart(const std::string& message_key) override;

 private:
  std::vector<std::filesystem::path> NoteFiles();
  void Take(const std::filesystem::path& file, std::vector<Left>& left);
  void RemoveHalfWritten(const std::filesystem::path& file) const;
  PrintNoteFile TakeFrom(std::map<std::string, PrintNoteFile>& notes, const std::string& message_key) const;

  // Constant after construction.
  const std::filesystem::path folder_;
  platform::ErrorReporter& errors_;

  NoteMaker maker_;
  std::optional<PrintNoteFile> printing_;            ///< being handed over, or accepted
  std::map<std::string, PrintNoteFile> recording_;   ///< by message key, as all of these
  std::map<std::string, PrintNoteFile> left_;        ///< left behind by another program
  std::map<std::string, std::size_t> closed_;        ///< by user: how many notes, 0 for a folder
  std::map<std::string, PrintNoteFile> next_start_;  ///< locked, so that nobody offers them before this ends
};

}  // namespace host
