#include "server/customers/customer_inquiry.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/agreed/record_layouts.h"
#include "platform/agreed/requests.h"
#include "platform/failure.h"
#include "platform/text.h"
#include "server/customers/customer_search.h"
#include "server/customers/stored_customer.h"

namespace server {
namespace {

using platform::EqualsIgnoringCase;
using platform::Failure;
using platform::RecordSet;
using platform::Value;

namespace request_key = platform::request_key;

constexpr std::string_view kId = "CUST_ID";
constexpr std::string_view kBalance = "OT_BAL";
constexpr std::int64_t kMostFound = 200;

void LeaveOut(std::vector<std::string>& columns, std::string_view name) {
  const auto same = [&](const std::string& column) { return EqualsIgnoringCase(column, name); };
  const auto column = std::ranges::find_if(columns, same);
  if (column == columns.end() || EqualsIgnoringCase(name, kId)) {
    throw Failure(Failure::Kind::kRefused,
                  "The column \"" + std::string(name) + "\" cannot be left out of a customer.");
  }
  columns.erase(column);
}

/// The columns of a customer but those that `excluded` names, separated by commas.
std::vector<std::string> ColumnsWithout(std::string_view excluded) {
  std::vector<std::string> columns(platform::kCustomerColumns.begin(), platform::kCustomerColumns.end());
  while (!excluded.empty()) {
    const auto name = excluded.substr(0, excluded.find(','));
    excluded.remove_prefix(std::min(name.size() + 1, excluded.size()));
    LeaveOut(columns, platform::Trim(name));
  }
  return columns;
}

void AppendCustomer(RecordSet& record, const RecordSet& stored, std::size_t row) {
  std::vector<Value> values;
  for (const auto& column : record.columns()) {
    if (!stored.HasColumn(column)) {
      values.emplace_back();
      continue;
    }
    const auto& value = stored.Get(row, column);
    values.push_back(column == kBalance ? Value(platform::Money::FromCents(value.AsInteger())) : value);
  }
  record.Append(std::move(values));
}

// There is one customer of an id, and it is the first row.
void RequireWholeCustomer(const RequestKeys& keys) {
  const auto element = keys.Text(request_key::kElementName);
  if (!EqualsIgnoringCase(element, request_key::kCustomers)) {
    throw Failure(Failure::Kind::kRefused, "The server has no elements " + platform::Quoted(element) +
                                               "; ask for " + platform::Quoted(request_key::kCustomers) +
                                               ".");
  }
  const auto first = keys.Number(request_key::kFirstRow).value_or(1);
  const auto last = keys.Number(request_key::kLastRow).value_or(first);
  if (first == 1 && last >= first) return;
  throw Failure(Failure::Kind::kRefused, "The rows " + std::to_string(first) + " to " + std::to_string(last) +
                                             " of a customer were asked for; there is only the first.");
}

struct Page {
  std::size_t first;  // from 0
  std::size_t count;
};

Page PageAsked(const RequestKeys& keys) {
  const auto first = keys.Number(request_key::kFirstRow).value_or(1);
  const auto last = keys.Number(request_key::kLastRow).value_or(first + kMostFound - 1);
  if (first >= 1 && last >= first && last - first < kMostFound)
    return {static_cast<std::size_t>(first - 1), static_cast<std::size_t>(last - first + 1)};
  throw Failure(Failure::Kind::kRefused, "The rows " + std::to_string(first) + " to " + std::to_string(last) +
                                             " cannot be asked for. Ask for the rows from 1 on, at most " +
                                             std::to_string(kMostFound) + " at once.");
}

}  // namespace

void AnswerWholeCustomer(Exchange& exchange) {
  RequireWholeCustomer(exchange.keys);
  AnswerCustomer(exchange);
}

void AnswerCustomer(Exchange& exchange) {
  auto columns = ColumnsWithout(exchange.keys.Text(request_key::kLeftOutColumns));
  const auto stored = exchange.database.Select(std::string(kSelectCustomers) + "WHERE CUST_ID = ?",
                                               {exchange.keys.Text(request_key::kCustomer)});
  if (stored->IsEmpty()) return;
  AppendCustomer(exchange.reply.AddRecord(platform::record_name::kCustomer, std::move(columns)), *stored, 0);
}

void AnswerListedCustomers(Exchange& exchange) {
  constexpr std::size_t kMostListed = 100;
  auto& customers = exchange.reply.AddRecord(platform::record_name::kCustomer, ColumnsWithout(kBalance));
  const auto ids = exchange.keys.Text(platform::request_key::kListedCustomers);
  std::string_view rest = ids;
  for (std::size_t listed = 0; !rest.empty(); ++listed) {
    if (listed == kMostListed)
      throw Failure(Failure::Kind::kRefused, "More than 100 customers were asked for at once.");
    const auto id = rest.substr(0, rest.find(','));
    rest.remove_prefix(std::min(id.size() + 1, rest.size()));
    const auto stored = exchange.database.Select("SELECT * FROM customer WHERE CUST_ID = ?",
                                                 {std::string(platform::Trim(id))});
    if (!stored->IsEmpty()) AppendCustomer(customers, *stored, 0);
  }
}

void AnswerCustomerSearch(Exchange& exchange) {
  const auto page = PageAsked(exchange.keys);
  const auto found = FindCustomers(exchange.database, exchange.keys.Text(request_key::kCustomerWords),
                                   page.first + kMostFound + 1);
  auto& customers = exchange.reply.AddRecord(platform::record_name::kCustomer, ColumnsWithout(kBalance));
  const auto end = std::min(found->RecordCount(), page.first + page.count);
  for (std::size_t row = page.first; row < end; ++row) AppendCustomer(customers, *found, row);
  exchange.reply
      .AddRecord(platform::record_name::kCustomerSearch,
                 {platform::kCustomerSearchColumns.begin(), platform::kCustomerSearchColumns.end()})
      .Append({found->RecordCount() > end ? "Y" : "N", found->RecordCount()});
}

}  // namespace server
