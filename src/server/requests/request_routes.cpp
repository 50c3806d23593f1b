#include "server/requests/request_routes.h"

#include <algorithm>
#include <array>
#include <string>

#include "platform/failure.h"
#include "server/context/context_request.h"
#include "server/customers/customer_inquiry.h"
#include "server/history/letter_history.h"
#include "server/history/letter_search.h"
#include "server/requests/template_folder.h"

namespace server {
namespace {

using platform::Failure;

constexpr int kCustomer = 7;
constexpr int kSearch = 79;
constexpr int kChange = 82;
constexpr int kFetch = 83;

constexpr auto kNoKeys = std::array<KnownKey, 0>();
constexpr auto kContextKeys = std::to_array<KnownKey>(
    {{"LTR_TYP_ID"}, {"POPULATE_LTR_BOOKMARKS"}, {"EMITFIELDDESCRIPTORS"}, {"EXPLAINSTATE"}});
constexpr auto kFetchKeys =
    std::to_array<KnownKey>({{"FETCHCONTEXT"}, {"EMITFIELDDESCRIPTORS"}, {"EXPLAINSTATE"}});
constexpr auto kHistoryKeys = kFetchKeys;
constexpr auto kCustomerKeys = std::to_array<KnownKey>({{"CUST_ID"}, {"EXCLCOLS"}});
constexpr auto kCustomerSearchKeys = std::to_array<KnownKey>({{"CUST_FIND", "like"}});

bool HasKey(const Request& request, std::string_view name) {
  return std::ranges::any_of(request.keys, [&](const auto& key) { return KeyName(key.Key) == name; });
}

bool AsksTemplateFolder(const Request& request) {
  return !request.inquiry_xml.empty();
}
bool AsksContext(const Request& request) {
  return request.Rows("XML_CONTEXT_INPUT") != nullptr;
}
bool AsksStoredContext(const Request& request) {
  return HasKey(request, "FETCHCONTEXT");
}
bool RecordsLetters(const Request& request) {
  return request.Rows("CORRHIST") != nullptr;
}
bool SearchesLetters(const Request& request) {
  return std::ranges::any_of(kLetterSearchKeys,
                             [&](const KnownKey& known) { return HasKey(request, known.name); });
}
bool AsksCustomer(const Request& request) {
  return HasKey(request, "CUST_ID");
}
bool SearchesCustomers(const Request& request) {
  return HasKey(request, "CUST_FIND");
}

constexpr auto kRoutes = std::to_array<Route>({
    {kFetch, AsksTemplateFolder, kNoKeys, false, AnswerTemplateFolder},
    {kFetch, AsksContext, kContextKeys, false, AnswerContext},
    {kFetch, AsksStoredContext, kFetchKeys, false, AnswerStoredContext},
    {kCustomer, AsksCustomer, kCustomerKeys, false, AnswerCustomer},
    {kCustomer, SearchesCustomers, kCustomerSearchKeys, false, AnswerCustomerSearch},
    {kSearch, SearchesLetters, kLetterSearchKeys, false, AnswerLetterSearch},
    {kChange, RecordsLetters, kHistoryKeys, true, RecordLetters},
});

}  // namespace

const Route& FindRoute(const Request& request) {
  for (const auto& route : kRoutes) {
    if (route.message_type == request.message_type && route.Takes(request)) return route;
  }
  const auto type = std::to_string(request.message_type);
  const bool known = std::ranges::find(kRoutes, request.message_type, &Route::message_type) != kRoutes.end();
  throw Failure(Failure::Kind::kRefused,
                known ? "The server cannot tell what this request of type " + type +
                            " asks for: it has none of the keys, records and inquiries that it knows."
                      : "The server does not answer requests of type " + type + ".");
}

}  // namespace server
