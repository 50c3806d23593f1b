#pragma once

#include <deque>
#include <string>

#include "platform/print_journal.h"
#include "platform/services.h"
#include "workspace/messaging/request_envelope.h"
#include "workspace/messaging/workspace_state.h"

namespace workspace {

/// The notes of printed letters: closed when the server has recorded the letter, and offered for recording
/// when a program has ended in between.
class UnrecordedLetters {
 public:
  /// All references outlive this.
  UnrecordedLetters(const platform::Services& services, const WorkspaceState& state,
                    RequestEnvelope& envelope)
      : services_(services), state_(state), envelope_(envelope) {}

  /// A reply has come; before anybody handles it.
  void ReplyCame();
  /// A reply has been handled. The first time that none is awaited, the letters that an ended program left
  /// behind are offered one after the other, each named to the user.
  void ReplyHandled();

 private:
  platform::PrintJournal::Outcome OutcomeOf(const std::string& message_key) const;
  void OfferNext();
  bool OfferRecording(const platform::PrintJournal::Left& letter);
  bool Asks(const std::string& question, platform::MessageAnswer default_answer) const;
  void RecordAgain(const platform::PrintNote& note);

  const platform::Services& services_;
  const WorkspaceState& state_;
  RequestEnvelope& envelope_;

  bool has_looked_ = false;
  std::deque<platform::PrintJournal::Left> left_;  // still to be offered
};

}  // namespace workspace
