#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/parties/services.h"
#include "workspace/messaging/pending_request.h"

namespace workspace {

/// What happens with the reply to one request. An empty step does nothing.
struct ReplyRoute {
  using Action = std::function<void(const Reply& reply)>;

  enum class StatusAfterwards {
    kSetByAction,
    kReady,
  };

  std::string request_name;
  Action action;
  StatusAfterwards status = StatusAfterwards::kSetByAction;
  std::function<void()> on_error;  ///< after the server's error text was shown
  std::function<void()> always;    ///< last, whatever came before
  /// Whether kReady holds this time; empty where it always does.
  std::function<bool()> is_ready = {};
  /// A reply with rows of this record goes this way whatever its request's name; "" for none.
  std::string record_name = {};
  /// Asked first about an error reply: whether its text is told elsewhere, later.
  std::function<bool(const Reply& reply, const std::string& error)> takes_error = {};
};

/// Takes every reply to the workspace and walks the table of routes by the name of its request.
///
/// A name that has no route shows "Ready". A reply to a request that a newer one has replaced is ignored. The
/// pointer is normal afterwards, or the hourglass where a handler has sent the next request. Nothing leaves
/// these functions.
class ReplyDispatcher {
 public:
  /// `always` ends the handling of every notification, ignored ones included. References outlive this.
  ReplyDispatcher(const platform::Services& services, PendingRequest& pending,
                  const std::string& message_title, std::vector<ReplyRoute> routes,
                  std::function<void()> always);

  /// A reply is ready for `application`; one for another application is ignored.
  void DataReady(const std::string& application);
  /// The reply that follows says why.
  void MsgTimeout();

  const std::vector<ReplyRoute>& routes() const { return routes_; }

 private:
  void Handle(const std::string& application);
  void HandleError(const ReplyRoute& route, const Reply& reply, const std::string& error) const;
  void HandleReply(const ReplyRoute& route, const Reply& reply) const;
  ReplyRoute RouteOf(const Reply& reply) const;
  bool IsByRecord(const ReplyRoute& route, const Reply& reply) const;

  const platform::Services& services_;
  PendingRequest& pending_;
  const std::string& message_title_;
  const std::vector<ReplyRoute> routes_;
  const std::function<void()> always_;
};

}  // namespace workspace
