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

/// Nothing where the customer has gone.
void AppendStored(Database& database, const std::string& id, RecordSet& record) {
  const auto stored = database.Select(std::string(kSelectCustomers) + "WHERE customer.CUST_ID = ?", {id});
  if (!stored->IsEmpty()) AppendCustomer(record, *stored, 0);
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
  std::int64_t first;  // from 0
  std::int64_t count;
};

Page PageAsked(const RequestKeys& keys) {
  const auto first = keys.Number(request_key::kFirstRow).value_or(1);
  const auto last = keys.Number(request_key::kLastRow);
  if (first >= 1 && !last) return {first - 1, kMostFound};
  if (first >= 1 && *last >= first && *last - first < kMostFound) return {first - 1, *last - first + 1};
  throw Failure(Failure::Kind::kRefused, "The rows from " + std::to_string(first) + " to " +
                                             (last ? std::to_string(*last) : "the end") +
                                             " cannot be asked for. Ask for rows from 1 on, at most " +
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
    AppendStored(exchange.database, std::string(platform::Trim(id)), customers);
  }
}

void AnswerCustomerSearch(Exchange& exchange) {
  const auto page = PageAsked(exchange.keys);
  const auto text = exchange.keys.Text(request_key::kCustomerWords);
  auto ids = FindCustomers(exchange.database, text, page.first, page.count + 1);
  const bool has_more = std::ssize(ids) > page.count;
  if (has_more) ids.pop_back();
  auto& customers = exchange.reply.AddRecord(platform::record_name::kCustomer, ColumnsWithout(kBalance));
  for (const auto& id : ids) AppendStored(exchange.database, id, customers);
  const bool is_all = page.first == 0 && !has_more;
  const auto total =
      is_all ? std::ssize(ids) : CountCustomers(exchange.database, text, platform::kMostCustomersCounted);
  exchange.reply
      .AddRecord(platform::record_name::kCustomerSearch,
                 {platform::kCustomerSearchColumns.begin(), platform::kCustomerSearchColumns.end()})
      .Append({has_more ? "Y" : "N", total});
}

}  // namespace server
