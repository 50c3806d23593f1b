#pragma once

#include <deque>
#include <string>

#include "platform/event.h"
#include "platform/parties/print_journal.h"
#include "platform/parties/services.h"
#include "workspace/messaging/pending_request.h"
#include "workspace/messaging/request_envelope.h"

namespace workspace {

/// The notes of printed letters: closed when the server has recorded the letter, and offered for recording
/// when a program has ended in between, unless the host asks for them itself. Decision [print-journal].
class UnrecordedLetters {
 public:
  /// All references outlive this.
  UnrecordedLetters(const platform::Services& services, const PendingRequest& pending,
                    const std::string& message_title, RequestEnvelope& envelope)
      : services_(services), pending_(pending), message_title_(message_title), envelope_(envelope) {}

  /// A reply has come; before anybody handles it.
  void ReplyCame();
  /// A reply has been handled. The first time that none is awaited, the letters that an ended program left
  /// behind are offered one after the other, each named to the user.
  void ReplyHandled();

  /// How the record of a letter ended, with its message key; from ReplyCame.
  platform::Event<const std::string&, platform::PrintJournal::Outcome> Settled;

  /// For a host that cannot answer questions: nothing is offered.
  void OfferNothing() { has_looked_ = true; }
  /// Sends the record of a letter that the journal has found left behind; Settled tells how it ended.
  void RecordAgain(const platform::PrintNote& note);

 private:
  platform::PrintJournal::Outcome OutcomeOf(const std::string& message_key) const;
  void OfferNext();
  bool OfferRecording(const platform::PrintJournal::Left& letter);
  bool Asks(const std::string& question) const;
  void TellClosedNotes() const;

  const platform::Services& services_;
  const PendingRequest& pending_;
  const std::string& message_title_;
  RequestEnvelope& envelope_;

  bool has_looked_ = false;
  std::deque<platform::PrintJournal::Left> left_;  // still to be offered
};

}  // namespace workspace
