#include "server/customers/customer_search.h"

#include <algorithm>
#include <iterator>

#include "platform/text.h"
#include "server/customers/customer_index.h"
#include "server/customers/customer_query.h"

namespace server {
namespace {

using Ids = std::vector<std::string>;

Ids ListAll(Database& database, std::int64_t skipped, std::int64_t limit) {
  const auto rows =
      database.Select("SELECT CUST_ID FROM customer ORDER BY CUST_ID LIMIT ? OFFSET ?", {limit, skipped});
  Ids ids;
  for (std::size_t row = 0; row < rows->RecordCount(); ++row) ids.push_back(rows->Text(row, "CUST_ID"));
  return ids;
}

}  // namespace

Ids FindCustomers(Database& database, std::string_view text, std::int64_t skipped, std::int64_t limit) {
  if (platform::Trim(text).empty()) return ListAll(database, skipped, limit);
  const auto query = ReadCustomerQuery(text);
  Ids found;
  if (!query) return found;
  for (const auto fit : {CustomerFit::kNumber, CustomerFit::kNameStart, CustomerFit::kOther}) {
    const auto wanted = limit - static_cast<std::int64_t>(found.size());
    if (wanted <= 0) break;
    auto ids = FittingCustomers(database, *query, fit, skipped, wanted);
    if (ids.empty() && skipped > 0)
      skipped -= std::min(skipped, CountFitting(database, *query, fit));
    else
      skipped = 0;
    std::ranges::move(ids, std::back_inserter(found));
  }
  return found;
}

std::int64_t CountCustomers(Database& database, std::string_view text, std::int64_t most) {
  if (platform::Trim(text).empty()) {
    return database
        .Select("SELECT COUNT(*) AS NUMBER_OF FROM (SELECT 1 FROM customer LIMIT ?) AS listed", {most})
        ->Get("NUMBER_OF")
        .AsInteger();
  }
  const auto query = ReadCustomerQuery(text);
  return query ? CountFitting(database, *query, most) : 0;
}

}  // namespace server
