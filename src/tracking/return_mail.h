#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "platform/parties/services.h"
#include "platform/record_set.h"
#include "workspace/messaging/pending_request.h"
#include "workspace/messaging/request_envelope.h"
#include "workspace/pages/pages.h"

namespace tracking {

/// A letter came back: the server is asked to mark the address it had been sent to.
class ReturnMail {
 public:
  /// What it works with and on; all of it outlives this.
  struct Uses {
    const platform::Services& services;
    const workspace::PendingRequest& pending;
    const std::string& message_title;
    workspace::Pages& pages;
    workspace::RequestEnvelope& envelope;
  };
  explicit ReturnMail(Uses uses) : uses_(uses) {}

  /// For the letter of the tracking page's current row. The pending request name stays that of the request
  /// before: the reply is known by its record. Returns whether the request is under way; a failure is
  /// reported.
  bool SubmitReturnMail();

  /// The reply with the record "RETURN_MAIL".
  void Replied(const workspace::Reply& reply);
  /// A reply has been handled: says what came of the letter, in a box where its address was not marked.
  void ReplyHandled();

  /// What came of the last letter, in the server's words; "" before, and after a request that came to
  /// nothing.
  const std::string& answer() const { return answer_; }

 private:
  struct Outcome {
    bool is_refused = false;
    std::string text = {};
  };

  void ShowMark(const platform::RecordSet& came) const;

  const Uses uses_;
  std::optional<Outcome> outcome_;  // yet to be told
  std::string answer_;
};

}  // namespace tracking
