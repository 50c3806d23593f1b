#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "composition/preview_doc.h"
#include "platform/parties/print_journal.h"
#include "platform/parties/services.h"
#include "workspace/letters/history_record.h"
#include "workspace/letters/print_run.h"
#include "workspace/messaging/letter_data.h"
#include "workspace/messaging/request_envelope.h"

namespace workspace {

/// A letter that is whole on its way to screen, paper or file, and its record in the letter history once it
/// has been printed. What is printed is noted in the print journal before spooler or file system get it.
class LetterPrinting {
 public:
  struct Uses {
    const platform::Services& services;
    RequestEnvelope& envelope;
    platform::ReplyListener& listener;
    HistoryRecord& history;
    /// The run that letters of that request belong to; null for a letter of its own.
    std::function<PrintRun*(const std::string& request_name)> run_of;
  };
  explicit LetterPrinting(Uses uses) : uses_(std::move(uses)) {}
  ~LetterPrinting() { ReleasePreview(); }

  // `request_name` is the request that brought the letter: it decides how the letter is recorded.
  /// Previews the letter; what is printed from the preview is recorded as it is now.
  void Preview(const LetterData& letter, const std::string& request_name);
  /// Previews it and asks where to save; a save counts as a print where the letter's address failed.
  void Save(const LetterData& letter, const std::string& request_name);
  /// Prints it without a preview and records it. Where it is not printed, its run is told why.
  void Print(LetterData& letter, const std::string& request_name);
  /// A dialog is about to show a preview of its own in which the letter may be printed.
  void ExpectFromDialog(const LetterData& letter, const std::string& request_name) {
    ExpectPrint(letter, request_name);
  }
  /// It has been closed: what is printed from now on is another letter.
  void DialogClosed() { uses_.services.print_journal.Expect({}); }
  /// The letter of that request is not printed: its run is told, where it belongs to one.
  void TellRun(const std::string& request_name, const platform::PrintFault& fault) const;
  /// Records a printed letter and continues its run.
  void PrintDoc(LetterData& letter, const std::string& request_name);
  /// The preview was printed: PrintDoc, and the preview goes.
  void mclsPreview_WordPrinted();

  /// Closes a preview that still stands.
  void ReleasePreview();

 private:
  composition::ZEMLO_PreviewDoc& PreviewOf(const LetterData& letter, const std::string& request_name);
  composition::ZEMLO_PreviewDoc& RequirePreview();
  void ExpectPrint(const LetterData& letter, const std::string& request_name);
  std::optional<platform::PrintNote> NoteOf(LetterData letter, const std::string& request_name) const;
  /// Adds none where nothing is to be recorded.
  void AddRecord(RequestDescription& message, LetterData& letter, const std::string& request_name) const;
  void ContinueRun(PrintRun* run, RequestDescription& message) const;

  const Uses uses_;
  // Of the preview that stands, as they were when it was opened.
  LetterData previewed_letter_;
  std::string previewed_request_;
  std::unique_ptr<composition::ZEMLO_PreviewDoc> mclsPreview_;
  platform::Connection word_printed_;
};

}  // namespace workspace
