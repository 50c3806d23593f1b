#pragma once

#include <atomic>
#include <condition_variable>
#include <deque>
#include <filesystem>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "platform/parties/comm_client.h"
#include "platform/parties/host_shell.h"
#include "platform/whole_file.h"

namespace server {

/// Hears how the downloads of its provider ended.
class CommunicationsClient : public platform::CommClient {};

/// Copies template files from the server's template folder, one after the other, on a thread of its own.
///
/// A file appears in its target folder whole or not at all, and replaces the one of its name. Server paths
/// may separate folders by "\"; the file's name is found without regard to case. Each download ends with
/// exactly one notification, in the order they were asked for.
class CommunicationsClientProvider : public platform::CommClientProvider {
 public:
  /// `events` outlives the provider; notifications come through it. Only files of `data_folder`'s server
  /// template folder are given out, and of those what `check` lets pass; it is called on the provider's
  /// thread.
  CommunicationsClientProvider(platform::EventQueue& events, const std::filesystem::path& data_folder,
                               platform::ContentCheck check = {});
  CommunicationsClientProvider(const CommunicationsClientProvider&) = delete;
  CommunicationsClientProvider& operator=(const CommunicationsClientProvider&) = delete;
  /// Finishes the file under way; the rest is dropped without a notification.
  ~CommunicationsClientProvider() override;

  /// The one client of this provider.
  std::shared_ptr<platform::CommClient> GetClient() override { return client_; }
  /// Downloads asked for before wait for this.
  void Connect() override;

  /// Asks for a file; never fails, what goes wrong is notified. `source`: the server's template folder and a
  /// plain file name. `target_folder` is made where it is missing.
  void Download(std::string source, std::string target_folder);
  /// Whether a download or its notification is still to come. Nothing is under way before Connect.
  bool HasWorkUnderWay() const { return connected_ && *unfinished_ > 0; }

 private:
  struct Wanted {
    std::string source;
    std::string target_folder;
  };
  void Run();
  void Copy(const Wanted& wanted) const;
  void Notify(const std::string& source, const std::string& status);

  // Constant after construction.
  platform::EventQueue& events_;
  const std::filesystem::path template_folder_;
  const platform::ContentCheck check_;
  const std::shared_ptr<CommunicationsClient> client_;
  const std::shared_ptr<std::atomic<int>> unfinished_;  // posted work keeps it, too

  std::atomic<bool> connected_ = false;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<Wanted> waiting_;  // guarded by mutex_
  bool closing_ = false;        // guarded by mutex_

  std::thread thread_;  // last: it uses all of the above
};

}  // namespace server
