#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/parties/message_component.h"
#include "platform/parties/services.h"
#include "platform/record_set.h"
#include "workspace/messaging/letter_data.h"

namespace workspace {

/// A reply that has been taken: which request it answers, the letter that was asked about, and where the rows
/// are.
struct Reply {
  std::string request_name = {};  ///< "" where nobody handles the reply
  std::string message_key = {};
  bool timed_out = false;
  LetterData letter = {};  ///< as it was when the request was sent; an empty one where it was about none
};

/// The reply's rows of that record, the first one current; null where it has no such record, or no rows of
/// it.
std::shared_ptr<platform::RecordSet> RowsOf(const platform::Services& services, const Reply& reply,
                                            const std::string& record_name);

/// The one request whose reply is still to come: of the workspace, or of a dialog that hears its own replies.
///
/// A request is begun when its message has a key, awaited from when it is on its way, and over when its reply
/// is taken. The next one may begin at any time and takes its place: a reply to the one before is nobody's.
class PendingRequest {
 public:
  /// Without a name nobody handles the reply, and the name stays that of the request before.
  void Begin(std::string message_key, std::optional<std::string> name, LetterData letter);
  /// What has been begun is on its way. `status` says so in words. Throws Failure kInternal where nothing has
  /// been begun.
  void Await(std::string status);
  /// The request takes longer than it may; a reply that says so follows. Holds until the next one begins.
  void TimedOut() { timed_out_ = true; }
  /// Takes the reply, where it is there. Nothing otherwise, and where none is awaited.
  std::optional<Reply> TakeReply(const platform::MessageComponent& messages);
  /// Who would have heard the reply goes.
  void Forget() { *this = {}; }

  bool IsAwaited() const { return stage_ == Stage::kAwaited; }
  bool timed_out() const { return timed_out_; }
  // "" when there is none.
  const std::string& name() const { return name_; }
  const std::string& message_key() const { return message_key_; }
  /// Of the request that is awaited.
  const std::string& status() const { return status_; }

 private:
  enum class Stage { kNone, kBegun, kAwaited };

  Stage stage_ = Stage::kNone;
  std::string name_;
  bool has_handler_ = false;
  std::string message_key_;
  std::string status_;
  bool timed_out_ = false;
  LetterData letter_;
};

}  // namespace workspace
