#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/parties/comm_client.h"
#include "tests/fakes/journal.h"

namespace fakes {

/// One communications client, whose messages the test sends.
class FakeCommClients : public platform::CommClientProvider {
 public:
  explicit FakeCommClients(Journal* journal = nullptr) : journal_(journal) {}

  std::shared_ptr<platform::CommClient> client = std::make_shared<platform::CommClient>();
  int connects = 0;
  std::function<void()> on_connect;  ///< may throw

  /// A file's download has ended.
  void Report(const std::string& status, const std::string& source,
              const std::string& command = "FILEDOWNLOAD") const {
    client->MessageReceived("<MESSAGE><COMMAND>" + command + "</COMMAND><STATUS>" + status +
                                "</STATUS><SOURCE>" + source + "</SOURCE></MESSAGE>",
                            "");
  }

  std::shared_ptr<platform::CommClient> GetClient() override {
    if (journal_ != nullptr) journal_->Add("get client");
    return client;
  }
  void Connect() override {
    ++connects;
    if (journal_ != nullptr) journal_->Add("connect");
    if (on_connect) on_connect();
  }

 private:
  Journal* journal_;
};

}  // namespace fakes
