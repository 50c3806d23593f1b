#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace platform {

/// A letter on its way to the printer, and the record it is to have in the letter history.
struct PrintNote {
  std::string letter;       ///< names the letter for the person
  std::string message_key;  ///< of the request that records it, however often that is sent
  /// Columns of the record "CORRHIST" with their values as texts; those that are null are left out.
  std::vector<std::pair<std::string, std::string>> record;

  bool operator==(const PrintNote&) const = default;
};

/// How far a noted letter has come.
enum class PrintStage {
  kHandingOver,  ///< whether spooler or file system took it is not known
  kPrinted,      ///< they have taken it; it is not recorded
  kRecording,    ///< its record was handed to the server, which has not confirmed it
};

/// Spooler and letter history have no common transaction: each letter leaves a note before it is handed to
/// the printer, and the note stays until the server has recorded the letter. A note outlives the program.
///
/// One letter is printed at a time. Every operation throws Failure where the note cannot be written or read;
/// what it says of the letter then has not happened. User-interface thread only.
class PrintJournal {
 public:
  /// Makes the note of the letter that is about to be printed, from its data context; nothing for a letter
  /// that is not to be recorded.
  using NoteMaker = std::function<std::optional<PrintNote>(const std::string& context)>;

  virtual ~PrintJournal() = default;

  /// What is printed from now on is noted as `maker` says; an empty one notes nothing.
  virtual void Expect(NoteMaker maker) = 0;

  // Told by who prints.
  /// The next moment spooler or file system get the letter: the note is on the disk when this returns.
  virtual void Begin(const std::string& context) = 0;
  virtual void Accept() = 0;
  /// They did not take it: the note goes.
  virtual void Abandon() = 0;

  // Told by who records.
  /// The letter that was accepted last goes to the server now. Returns the message key its record has to
  /// travel under; "" where no letter was noted.
  virtual std::string Record() = 0;
  /// The keys of the records whose reply is still to come.
  virtual std::vector<std::string> Recording() const = 0;
  enum class Outcome {
    kRecorded,    ///< the note goes
    kRefused,     ///< the note stays for the next start
    kUnanswered,  ///< so it does
  };
  virtual void Settle(const std::string& message_key, Outcome outcome) = 0;

  // At the next start.
  struct Left {
    PrintNote note;
    PrintStage stage = PrintStage::kHandingOver;
    std::string user = {};  ///< who printed it; "" for this user
  };
  /// The letters that a program left behind which runs no more, oldest first; they are this program's to deal
  /// with from then on.
  virtual std::vector<Left> LeftBehind() = 0;
  /// Notes that only another user may read, found by the last LeftBehind: whose, and how many; 0 where the
  /// whole folder is closed.
  struct Closed {
    std::string user;
    std::size_t letters = 0;
  };
  virtual std::vector<Closed> ClosedNotes() const = 0;
  /// The record of a letter that was left behind goes to the server now, under its key.
  virtual void RecordAgain(const std::string& message_key) = 0;
  virtual void Forget(const std::string& message_key) = 0;
  virtual void LeaveForNextStart(const std::string& message_key) = 0;
};

}  // namespace platform
