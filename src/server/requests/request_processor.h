#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

#include "server/requests/server_parties.h"
#include "server/wire/exchange.h"
#include "server/wire/wire_format.h"

namespace server {

class Database;
struct Route;

/// Answers requests one after the other: reads each, finds who answers it, gives it a transaction of its own.
/// Stays on the thread of its first request. Decision [stored-replies].
class RequestProcessor {
 public:
  using Deadline = std::chrono::steady_clock::time_point;

  /// `data_folder`: the folder that `init` has made. `ending`, stopped from any thread, breaks off what takes
  /// long and changes nothing.
  RequestProcessor(std::filesystem::path data_folder, const ServerParties& parties,
                   std::stop_token ending = {});
  ~RequestProcessor();

  /// Always an answer, never a failure: what goes wrong is the reply's error text, and nothing is stored
  /// then. A changing request whose key has been answered before gets the same reply again and changes
  /// nothing. Nothing is changed after `deadline`, when nobody waits for the answer any more.
  std::string Answer(std::string_view request_text, Deadline deadline = Deadline::max()) noexcept;

 private:
  std::string AnswerOrFail(const Request& request, Deadline deadline);
  /// Outside of any transaction of changes: a verifier may take seconds.
  std::vector<VerifiedAddress> Verify(const Route& route, const Request& request, const RequestKeys& keys);
  Database& OpenDatabase();

  // Constant after construction.
  const std::filesystem::path data_folder_;
  const std::filesystem::path template_folder_;
  const ServerParties parties_;
  const std::stop_token ending_;

  std::unique_ptr<Database> database_;  // opened by the first request that can open it
};

}  // namespace server
