#include "server/requests/request_routes.h"

#include <algorithm>
#include <array>
#include <string>

#include "platform/agreed/requests.h"
#include "platform/failure.h"
#include "platform/text.h"
#include "server/batch/batch_inquiry.h"
#include "server/context/context_request.h"
#include "server/customers/customer_changes.h"
#include "server/customers/customer_forms.h"
#include "server/customers/customer_inquiry.h"
#include "server/customers/customer_save.h"
#include "server/customers/return_mail.h"
#include "server/history/batch_items.h"
#include "server/history/letter_history.h"
#include "server/history/letter_search.h"
#include "server/requests/template_folder.h"

namespace server {
namespace {

using platform::Failure;

namespace message_type = platform::message_type;
namespace record_name = platform::record_name;
namespace request_key = platform::request_key;

constexpr auto kNoKeys = std::array<KnownKey, 0>();
constexpr auto kContextKeys = std::to_array<KnownKey>({{request_key::kLetterType},
                                                       {request_key::kFillBookmarks},
                                                       {request_key::kFieldDescriptors},
                                                       {request_key::kExplainState}});
constexpr auto kFetchKeys = std::to_array<KnownKey>(
    {{request_key::kFetchContext}, {request_key::kFieldDescriptors}, {request_key::kExplainState}});
constexpr auto kHistoryKeys = kFetchKeys;
constexpr auto kCustomerKeys =
    std::to_array<KnownKey>({{request_key::kCustomer}, {request_key::kLeftOutColumns}});
constexpr auto kListedCustomerKeys = std::to_array<KnownKey>({{request_key::kListedCustomers}});
constexpr auto kWholeCustomerKeys = std::to_array<KnownKey>({{request_key::kElementName},
                                                             {request_key::kFirstRow},
                                                             {request_key::kLastRow},
                                                             {request_key::kSingleCredential},
                                                             {request_key::kCustomer}});
constexpr auto kCustomerChangeKeys =
    std::to_array<KnownKey>({{request_key::kCustomer}, {request_key::kCustomerChanges}});
constexpr auto kSaveKeys =
    std::to_array<KnownKey>({{request_key::kCustomerVersion}, {request_key::kAcceptedSuggestions}});
constexpr auto kCustomerFormKeys =
    std::to_array<KnownKey>({{request_key::kCustomer}, {request_key::kFormTypeAsked}});
constexpr auto kCustomerSearchKeys =
    std::to_array<KnownKey>({{request_key::kCustomerWords, platform::key_operator::kLike},
                             {request_key::kFirstRow},
                             {request_key::kLastRow}});

bool HasKey(const Request& request, std::string_view name) {
  return std::ranges::any_of(
      request.keys, [&](const auto& key) { return platform::EqualsIgnoringCase(KeyName(key.Key), name); });
}

constexpr auto kReturnMailKeys = std::to_array<KnownKey>({{request_key::kReturnMail}});
constexpr auto kReprintBatchKeys = std::to_array<KnownKey>({{request_key::kReprintBatch}});
constexpr auto kWaitingItemKeys = std::to_array<KnownKey>({{request_key::kBatchItems}});

bool AsksTemplateFolder(const Request& request) {
  return !request.inquiry_xml.empty();
}
bool AsksContext(const Request& request) {
  return request.Rows(record_name::kContextInput) != nullptr;
}
bool AsksStoredContext(const Request& request) {
  return HasKey(request, request_key::kFetchContext);
}
bool RecordsLetters(const Request& request) {
  return request.Rows(record_name::kHistory) != nullptr;
}
bool GivesToBatchRun(const Request& request) {
  return request.Rows(record_name::kBatchItems) != nullptr;
}
bool ReturnsMail(const Request& request) {
  return HasKey(request, request_key::kReturnMail);
}
bool AsksWaitingItems(const Request& request) {
  return HasKey(request, request_key::kBatchItems);
}
bool AsksBatchStatistics(const Request& request) {
  return HasKey(request, request_key::kBatchStatistics);
}
/// Also where neither a day nor a status is asked for: a search of letters says more than THIN.
bool SearchesBatchRuns(const Request& request) {
  const bool thin_alone = request.keys.size() == 1 && HasKey(request, request_key::kThin);
  return thin_alone || HasKey(request, request_key::kRunDays) || HasKey(request, request_key::kRunStatus);
}
bool ResubmitsRun(const Request& request) {
  return HasKey(request, request_key::kReprintBatch);
}
bool SearchesLetters(const Request& request) {
  return std::ranges::any_of(kLetterSearchKeys,
                             [&](const KnownKey& known) { return HasKey(request, known.name); });
}
bool AsksWholeCustomer(const Request& request) {
  return HasKey(request, request_key::kElementName);
}
bool AsksCustomerChanges(const Request& request) {
  return HasKey(request, request_key::kCustomerChanges);
}
bool SavesCustomer(const Request& request) {
  return request.Rows(record_name::kCustomer) != nullptr;
}
bool AsksCustomer(const Request& request) {
  return HasKey(request, request_key::kCustomer);
}
bool ListsCustomers(const Request& request) {
  return HasKey(request, request_key::kListedCustomers);
}
bool SearchesCustomers(const Request& request) {
  return HasKey(request, request_key::kCustomerWords);
}

constexpr auto kRoutes = std::to_array<Route>({
    {message_type::kFetch, AsksTemplateFolder, kNoKeys, false, AnswerTemplateFolder},
    {message_type::kFetch, AsksContext, kContextKeys, false, AnswerContext},
    {message_type::kFetch, AsksStoredContext, kFetchKeys, false, AnswerStoredContext},
    {message_type::kCustomer, AsksWholeCustomer, kWholeCustomerKeys, false, AnswerWholeCustomer},
    {message_type::kCustomer, AsksCustomerChanges, kCustomerChangeKeys, false, AnswerCustomerChanges},
    {message_type::kSaveCustomer, SavesCustomer, kSaveKeys, true, SaveCustomer, AddressesToVerify},
    {message_type::kCustomer, AsksCustomer, kCustomerKeys, false, AnswerCustomer},
    {message_type::kCustomer, ListsCustomers, kListedCustomerKeys, false, AnswerListedCustomers},
    {message_type::kCustomer, SearchesCustomers, kCustomerSearchKeys, false, AnswerCustomerSearch},
    {message_type::kCustomerForms, AsksCustomer, kCustomerFormKeys, false, AnswerCustomerForms},
    {message_type::kSearch, AsksBatchStatistics, kBatchStatisticsKeys, false, AnswerBatchStatistics},
    {message_type::kSearch, SearchesBatchRuns, kBatchRunKeys, false, AnswerBatchRuns},
    {message_type::kSearch, SearchesLetters, kLetterSearchKeys, false, AnswerLetterSearch},
    {message_type::kSearch, AsksWaitingItems, kWaitingItemKeys, false, AnswerWaitingItems},
    {message_type::kChange, RecordsLetters, kHistoryKeys, true, RecordLetters},
    {message_type::kChange, GivesToBatchRun, kNoKeys, true, AnswerBatchItems},
    {message_type::kChange, ResubmitsRun, kReprintBatchKeys, true, AnswerBatchAgain},
    {message_type::kChange, ReturnsMail, kReturnMailKeys, true, AnswerReturnMail},
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
