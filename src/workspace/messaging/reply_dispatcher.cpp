#include "workspace/messaging/reply_dispatcher.h"

#include <utility>

#include "platform/identity.h"
#include "workspace/messaging/at_exit.h"

namespace workspace {

namespace {

constexpr std::string_view kDataReady = "ZEMLO_Corresp.mVEMTMessage_DataReady";

}  // namespace

ReplyDispatcher::ReplyDispatcher(const platform::Services& services, PendingRequest& pending,
                                 const std::string& message_title, std::vector<ReplyRoute> routes,
                                 std::function<void()> always)
    : services_(services),
      pending_(pending),
      message_title_(message_title),
      routes_(std::move(routes)),
      always_(std::move(always)) {}

void ReplyDispatcher::DataReady(const std::string& application) {
  platform::Trap(services_, kDataReady, [&] { Handle(application); });
  platform::Trap(services_, kDataReady, [&] {
    const bool is_ours = application == platform::kApplicationName;
    services_.host.SetMousePointer(is_ours && pending_.IsAwaited() ? platform::MousePointer::kHourglass
                                                                   : platform::MousePointer::kNormal);
    if (always_) always_();
  });
}

void ReplyDispatcher::MsgTimeout() {
  pending_.TimedOut();
}

void ReplyDispatcher::Handle(const std::string& application) {
  if (application != platform::kApplicationName) throw platform::AbandonStep();
  const auto reply = pending_.TakeReply(services_.messages);
  if (!reply) return;  // to a request that a newer one has replaced
  services_.host.SetMousePointer(platform::MousePointer::kHourglass);
  services_.status.SetReady(true);

  const auto route = RouteOf(*reply);
  const AtExit at_exit(services_, kDataReady, route.always);
  const auto error = services_.messages.GetReplyError(
      application, std::string(platform::kApplicationName) + ".mVemtMessage_DataReady", reply->message_key);
  if (error.empty()) {
    HandleReply(route, *reply);
  } else {
    HandleError(route, *reply, error);
  }
}

void ReplyDispatcher::HandleError(const ReplyRoute& route, const Reply& reply,
                                  const std::string& error) const {
  if (route.takes_error && route.takes_error(reply, error)) {
    if (!pending_.IsAwaited()) services_.status.ShowStatus("Ready");
    return;
  }
  services_.host.ShowMessage({error, platform::MessageIcon::kCritical, message_title_});
  services_.status.ShowStatus(reply.timed_out ? "Search timed out" : "Search was not successful");
  if (route.on_error) route.on_error();
}

void ReplyDispatcher::HandleReply(const ReplyRoute& route, const Reply& reply) const {
  using Status = ReplyRoute::StatusAfterwards;
  if (route.action) route.action(reply);
  const bool is_ready = route.status == Status::kReady && (!route.is_ready || route.is_ready());
  if (is_ready) services_.status.ShowStatus("Ready");
}

bool ReplyDispatcher::IsByRecord(const ReplyRoute& route, const Reply& reply) const {
  return !route.record_name.empty() && RowsOf(services_, reply, route.record_name) != nullptr;
}

ReplyRoute ReplyDispatcher::RouteOf(const Reply& reply) const {
  for (const auto& route : routes_) {
    if (IsByRecord(route, reply)) return route;
  }
  for (const auto& route : routes_) {
    if (route.record_name.empty() && route.request_name == reply.request_name) return route;
  }
  return {"", {}, ReplyRoute::StatusAfterwards::kReady, {}, {}};
}

}  // namespace workspace
