#include "workspace/letters/unrecorded_letters.h"

#include <array>
#include <utility>

#include "platform/agreed/requests.h"
#include "platform/identity.h"

namespace workspace {

namespace {

using platform::MessageAnswer;
using platform::PrintJournal;
using platform::PrintStage;

constexpr const char* kProcedure = "ZEMLO_Corresp.UnrecordedLetters";

struct Question {
  PrintStage stage;
  const char* text;  ///< follows "The letter ... "
};
constexpr auto kQuestions = std::to_array<Question>({
    {PrintStage::kHandingOver,
     " was on its way to the printer when the program ended, and is not in the letter history. Look whether "
     "it was printed. Was it printed, and should it be recorded now?"},
    {PrintStage::kPrinted, " was printed but not recorded in the letter history. Should it be recorded now?"},
    {PrintStage::kRecording,
     " was printed, but the letter history has not confirmed its record. Should the record be sent again? It "
     "is stored once, also where it has arrived before."},
});

const Question& QuestionAt(PrintStage stage) {
  for (const auto& question : kQuestions) {
    if (question.stage == stage) return question;
  }
  throw platform::Failure(platform::Failure::Kind::kInternal, "A letter's note has no such stage.");
}

}  // namespace

void UnrecordedLetters::ReplyCame() {
  for (const auto& key : services_.print_journal.Recording()) {
    if (!services_.messages.HasReply(key)) continue;
    const auto outcome = OutcomeOf(key);
    platform::Trap(services_, kProcedure, [&] { services_.print_journal.Settle(key, outcome); });
    Settled(key, outcome);
  }
}

PrintJournal::Outcome UnrecordedLetters::OutcomeOf(const std::string& message_key) const {
  using Outcome = PrintJournal::Outcome;
  const std::string application(platform::kApplicationName);
  if (services_.messages.GetReplyError(application, kProcedure, message_key).empty())
    return Outcome::kRecorded;
  // The next letter of a run could not be fetched, but the one that was printed is recorded.
  if (services_.messages.GetRecord(application, platform::record_name::kHistory, message_key) != nullptr)
    return Outcome::kRecorded;
  return pending_.timed_out() ? Outcome::kUnanswered : Outcome::kRefused;
}

void UnrecordedLetters::ReplyHandled() {
  if (pending_.IsAwaited()) return;
  platform::Trap(services_, kProcedure, [&] {
    if (!std::exchange(has_looked_, true)) {
      for (auto& letter : services_.print_journal.LeftBehind()) left_.push_back(std::move(letter));
      TellClosedNotes();
    }
    OfferNext();
  });
}

// Until one is under way to the server: its reply goes on.
void UnrecordedLetters::OfferNext() {
  bool is_under_way = false;
  while (!left_.empty() && !is_under_way) {
    const auto letter = std::move(left_.front());
    left_.pop_front();
    platform::Trap(services_, kProcedure, [&] { is_under_way = OfferRecording(letter); });
  }
}

bool UnrecordedLetters::OfferRecording(const PrintJournal::Left& letter) {
  const auto& note = letter.note;
  const auto& question = QuestionAt(letter.stage);
  const auto printed_by = letter.user.empty() ? "" : ", printed by user \"" + letter.user + "\",";
  if (Asks("The letter " + note.letter + printed_by + question.text)) {
    RecordAgain(note);
    return true;
  }
  if (Asks("Should the letter " + note.letter +
           " be forgotten? It will not be in the letter history. "
           "With No you are asked again at the next start.")) {
    services_.print_journal.Forget(note.message_key);
  } else {
    services_.print_journal.LeaveForNextStart(note.message_key);
  }
  return false;
}

bool UnrecordedLetters::Asks(const std::string& question) const {
  return services_.host.ShowMessage({question, platform::MessageIcon::kQuestion, message_title_,
                                     platform::MessageButtons::kYesNo, MessageAnswer::kNo}) ==
         MessageAnswer::kYes;
}

// Nobody is asked: only who may read a note can deal with it.
void UnrecordedLetters::TellClosedNotes() const {
  std::string users;
  for (const auto& closed : services_.print_journal.ClosedNotes())
    users += (users.empty() ? "\"" : ", \"") + closed.user + "\"";
  if (users.empty()) return;
  services_.status.ShowStatus("Letters printed by " + users +
                              " are not recorded yet. Only who printed them can record them.");
}

void UnrecordedLetters::RecordAgain(const platform::PrintNote& note) {
  services_.print_journal.RecordAgain(note.message_key);
  RecordDescription::Row row;
  for (const auto& [column, value] : note.record) row.emplace_back(column, value);
  envelope_.Send({.type = platform::message_type::kChange,
                  .name = "LetterAU",
                  .records = {{platform::record_name::kHistory, {std::move(row)}}},
                  .message_key = note.message_key,
                  .status = "Saving letter history"});
}

}  // namespace workspace
