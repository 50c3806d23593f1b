#include "server/requests/request_processor.h"

#include <utility>

#include "platform/failure.h"
#include "platform/text.h"
#include "server/requests/request_routes.h"
#include "server/schema/schema.h"
#include "server/storage/database.h"
#include "server/storage/server_folders.h"

namespace server {
namespace {

/// The reply that a request of this key has been given before; "" when there is none.
std::string EarlierReply(Database& database, const std::string& message_key) {
  const auto rows = database.Select("SELECT REPLY FROM request_log WHERE MSG_KEY = ?", {message_key});
  return rows->IsEmpty() ? "" : rows->FirstText();
}

// A request is sent again within minutes, if at all.
constexpr auto kRequestsAreKept = std::chrono::days(30);
constexpr std::int64_t kMostForgottenAtOnce = 5'000;

/// Old entries of the request log go, the oldest first, a bounded number each time.
void ForgetOldRequests(Database& database, platform::Timestamp now) {
  try {
    Transaction transaction(database, Transaction::Purpose::kChanging);
    database.Change(
        R"(DELETE FROM request_log WHERE MSG_KEY IN
           (SELECT MSG_KEY FROM request_log WHERE RCVD_TS < ? ORDER BY RCVD_TS LIMIT ?))",
        {now - kRequestsAreKept, kMostForgottenAtOnce});
    transaction.Commit();
  } catch (const platform::Failure&) {
    // A full disk or a busy database must not keep anybody from reading; the next start tries again.
  }
}

/// Whoever asked has been told that nothing was done, and asks again.
void RequireTime(RequestProcessor::Deadline deadline) {
  if (std::chrono::steady_clock::now() >= deadline)
    throw platform::Failure(platform::Failure::Kind::kTimedOut,
                            "The application server did not come to the request in time. Nothing was saved.");
}

}  // namespace

RequestProcessor::RequestProcessor(std::filesystem::path data_folder, const ServerParties& parties,
                                   std::stop_token ending)
    : data_folder_(std::move(data_folder)),
      template_folder_(TemplateFolder(data_folder_)),
      parties_(parties),
      ending_(std::move(ending)) {}

RequestProcessor::~RequestProcessor() = default;

std::string RequestProcessor::Answer(std::string_view request_text, Deadline deadline) noexcept {
  Reply refusal;
  try {
    const auto request = ReadRequest(request_text);
    refusal.message_key = request.message_key;
    return AnswerOrFail(request, deadline);
  } catch (const std::exception& failure) {
    refusal.error = failure.what();
  } catch (...) {
    refusal.error = "The server met a fault that it cannot name.";
  }
  // A file name, for one, need not be UTF-8.
  if (!platform::IsValidUtf8(refusal.error))
    refusal.error = "The server met a fault whose text cannot be shown.";
  return WriteReply(refusal);
}

std::string RequestProcessor::AnswerOrFail(const Request& request, Deadline deadline) {
  const auto& route = FindRoute(request);
  const RequestKeys keys(request.keys, route.keys);
  auto& database = OpenDatabase();
  const auto verified = Verify(route, request, keys);
  if (route.changes) RequireTime(deadline);
  Transaction transaction(database,
                          route.changes ? Transaction::Purpose::kChanging : Transaction::Purpose::kReading);
  if (route.changes) {
    if (auto earlier = EarlierReply(database, request.message_key); !earlier.empty()) return earlier;
  }
  Reply reply{.message_key = request.message_key, .error = "", .records = {}};
  Exchange exchange{request,          keys,    reply,           database,          parties_.clock.Now(),
                    template_folder_, ending_, parties_.rights, parties_.verifier, verified};
  route.Answer(exchange);
  auto text = WriteReply(reply);
  if (route.changes) {
    database.Change("INSERT INTO request_log (MSG_KEY, RCVD_TS, REPLY) VALUES (?, ?, ?)",
                    {request.message_key, exchange.now, text});
    RequireTime(deadline);  // others may have kept the database for seconds
  }
  transaction.Commit();
  return text;
}

std::vector<VerifiedAddress> RequestProcessor::Verify(const Route& route, const Request& request,
                                                      const RequestKeys& keys) {
  std::vector<VerifiedAddress> verified;
  if (route.AddressesToVerify == nullptr) return verified;
  std::vector<platform::PostalAddress> asked;
  {
    Transaction transaction(*database_, Transaction::Purpose::kReading);
    if (EarlierReply(*database_, request.message_key).empty()) {
      Reply none;
      Exchange exchange{request,
                        keys,
                        none,
                        *database_,
                        parties_.clock.Now(),
                        template_folder_,
                        ending_,
                        parties_.rights,
                        parties_.verifier,
                        verified};
      asked = route.AddressesToVerify(exchange);
    }
    transaction.Commit();
  }
  for (const auto& address : asked) {
    platform::While("verifying an address; nothing was saved", [&] {
      verified.push_back({address, parties_.verifier.Verify(address, ending_)});
    });
  }
  return verified;
}

Database& RequestProcessor::OpenDatabase() {
  if (!database_) {
    auto database = std::make_unique<Database>(DatabaseFile(data_folder_), Database::Opening::kExisting);
    PrepareSchema(*database);
    ForgetOldRequests(*database, parties_.clock.Now());
    database_ = std::move(database);
  }
  return *database_;
}

}  // namespace server
