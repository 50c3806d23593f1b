#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>

#include "platform/parties/host_shell.h"
#include "platform/parties/message_component.h"
#include "server/link/communications_client.h"
#include "server/link/deadline_watch.h"
#include "server/requests/application_server.h"

namespace server {

/// The message component on an application server of its own in this process.
///
/// User-interface thread only; replies come through the event queue, never inside a call. A reply reaches the
/// listener that made its message; where that one has gone, nobody hears it. The last ReplyStore::kKept
/// replies can be read.
class ServerMessageComponent : public platform::MessageComponent, public platform::MessageTransport {
 public:
  /// All outlive the component, with what `parties` names; `data_folder` is the one that `init` made,
  /// `downloads` moves the files that listeners ask for.
  ServerMessageComponent(platform::EventQueue& events, CommunicationsClientProvider& downloads,
                         const std::filesystem::path& data_folder, const ServerParties& parties);
  ~ServerMessageComponent() override;

  std::unique_ptr<platform::ReplyListener> NewListener() override;
  std::shared_ptr<platform::RequestRecord> GetRecord(const std::string& application,
                                                     const std::string& record_name,
                                                     const std::string& message_key) override;
  bool HasReply(const std::string& message_key) const override;
  std::string GetReplyError(const std::string& application, const std::string& procedure,
                            const std::string& message_key) override;

  std::string BuildMessage(const platform::RequestMessage& message) override;
  /// Throws Failure kRefused for a message that cannot be written down, or that is under way already.
  void Send(const platform::RequestMessage& message, std::chrono::milliseconds time_out) override;

  /// Whether a reply, a download or the notification of either is still to come: what a program waits for
  /// before it ends.
  bool HasWorkUnderWay() const;

 private:
  class Listener;
  struct State;

  // What the event queue may still hold work for after the component has gone.
  const std::shared_ptr<State> state_;
  platform::EventQueue& events_;
  CommunicationsClientProvider& downloads_;

  DeadlineWatch deadlines_;
  ApplicationServer server_;  // last: it is stopped first, and its answers need all of the above
};

}  // namespace server
