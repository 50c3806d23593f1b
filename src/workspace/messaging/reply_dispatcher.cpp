#include "workspace/messaging/reply_dispatcher.h"

#include <utility>

#include "platform/identity.h"
#include "workspace/messaging/at_exit.h"

namespace workspace {

namespace {

constexpr std::string_view kDataReady = "ZEMLO_Corresp.mVEMTMessage_DataReady";

}  // namespace

ReplyDispatcher::ReplyDispatcher(const platform::Services& services, WorkspaceState& state,
                                 const std::string& message_title, std::vector<ReplyRoute> routes,
                                 std::function<void()> always)
    : services_(services),
      state_(state),
      message_title_(message_title),
      routes_(std::move(routes)),
      always_(std::move(always)) {}

void ReplyDispatcher::DataReady(const std::string& application) {
  platform::Trap(services_, kDataReady, [&] { Handle(application); });
  platform::Trap(services_, kDataReady, [&] {
    const bool is_ours = application == platform::kApplicationName;
    services_.host.SetMousePointer(is_ours && state_.AwaitsReply() ? platform::MousePointer::kHourglass
                                                                   : platform::MousePointer::kNormal);
    if (always_) always_();
  });
}

void ReplyDispatcher::MsgTimeout() {
  state_.timed_out = true;
}

void ReplyDispatcher::Handle(const std::string& application) {
  if (application != platform::kApplicationName) throw platform::AbandonStep();
  if (!TakeAwaited()) return;
  services_.host.SetMousePointer(platform::MousePointer::kHourglass);
  services_.status.SetReady(true);

  // A handler may send the next request: the route of the reply at hand is the one found here.
  const auto route = PendingRoute();
  const AtExit at_exit(services_, kDataReady, route.always);
  const auto error = services_.messages.GetReplyError(
      application, std::string(platform::kApplicationName) + ".mVemtMessage_DataReady",
      state_.pending_message_key);
  if (error.empty()) {
    HandleReply(route);
  } else {
    HandleError(route, error);
  }
}

// A reply to a request that a newer one has replaced is not awaited any more.
bool ReplyDispatcher::TakeAwaited() const {
  if (!state_.AwaitsReply() || !services_.messages.HasReply(state_.awaited_message_key)) return false;
  state_.awaited_message_key.clear();
  return true;
}

void ReplyDispatcher::HandleError(const ReplyRoute& route, const std::string& error) const {
  const bool timed_out = state_.timed_out;  // what is sent while the box stands clears the flag
  services_.host.ShowMessage({error, platform::MessageIcon::kCritical, message_title_});
  services_.status.ShowStatus(timed_out ? "Search timed out" : "Search was not successful");
  if (route.on_error) route.on_error();
}

void ReplyDispatcher::HandleReply(const ReplyRoute& route) const {
  using Status = ReplyRoute::StatusAfterwards;
  if (route.action) route.action();
  const bool is_ready = route.status == Status::kReady && (!route.is_ready || route.is_ready());
  if (is_ready) services_.status.ShowStatus("Ready");
}

ReplyRoute ReplyDispatcher::PendingRoute() const {
  ReplyRoute nobody{"", {}, ReplyRoute::StatusAfterwards::kReady, {}, {}};
  const auto& unhandled = state_.unhandled_message_key;
  if (!unhandled.empty() && state_.pending_message_key == unhandled) return nobody;
  for (const auto& route : routes_) {
    if (route.request_name == state_.pending_request_name) return route;
  }
  return nobody;
}

}  // namespace workspace
