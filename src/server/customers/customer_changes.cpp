#include "server/customers/customer_changes.h"

#include "platform/agreed/record_layouts.h"
#include "platform/agreed/requests.h"
#include "platform/failure.h"
#include "platform/text.h"

namespace server {
namespace {

using platform::Value;

namespace request_key = platform::request_key;

// As much as a message box can show. The history has all of it.
constexpr std::size_t kMostChangesTold = 3;
constexpr std::size_t kMostValuesTold = 6;

Value OrNull(const std::string& text) {
  return text.empty() ? Value() : Value(text);
}

}  // namespace

bool StoreCustomerChanges(Exchange& exchange, const std::string& customer, std::int64_t number,
                          const CustomerValues& before, const CustomerValues& after) {
  bool any = false;
  for (const auto& [column, value] : after) {
    const auto old = before.find(column);
    const auto old_value = old == before.end() ? std::string() : old->second;
    if (old_value == value) continue;
    exchange.database.Change(
        R"(INSERT INTO customer_change (CUST_ID, UPDT_NBR, COL_NM, UPDT_TS, UPDT_USER_ID, OLD_TXT, NEW_TXT)
             VALUES (?, ?, ?, ?, ?, ?, ?))",
        {customer, number, column, exchange.now, exchange.request.user_id, OrNull(old_value), OrNull(value)});
    any = true;
  }
  return any;
}

std::int64_t NextChange(Database& database, const std::string& customer) {
  return database
      .Select(R"(SELECT COALESCE(MAX(UPDT_NBR), 0) + 1 AS NEXT_NBR FROM
                   (SELECT UPDT_NBR FROM customer_change WHERE CUST_ID = ?
                    UNION ALL SELECT UPDT_NBR FROM customer WHERE CUST_ID = ?) AS known)",
              {customer, customer})
      ->Get("NEXT_NBR")
      .AsInteger();
}

std::string ChangesSince(Database& database, const std::string& customer, std::int64_t number) {
  const auto rows = database.Select(
      "SELECT * FROM customer_change WHERE CUST_ID = ? AND UPDT_NBR > ? ORDER BY UPDT_NBR DESC, COL_NM",
      {customer, number});
  if (rows->IsEmpty()) return "a program that keeps no history";
  std::string text;
  std::string change;
  std::size_t changes = 0;
  std::size_t values = 0;
  for (std::size_t row = 0; row < rows->RecordCount(); ++row) {
    const bool begins = rows->Text(row, "UPDT_NBR") != change;
    change = rows->Text(row, "UPDT_NBR");
    if (begins && ++changes <= kMostChangesTold) {
      text +=
          (text.empty() ? "" : "; ") + rows->Text(row, "UPDT_USER_ID") + " on " + rows->Text(row, "UPDT_TS");
      values = 0;
    }
    const auto words = WordsForColumn(rows->Text(row, "COL_NM"));
    if (changes > kMostChangesTold || words.empty() || ++values > kMostValuesTold) continue;
    text += (values == 1 ? ": " : ", ") + std::string(words) + " from " +
            platform::Quoted(rows->Text(row, "OLD_TXT")) + " to " +
            platform::Quoted(rows->Text(row, "NEW_TXT"));
  }
  if (changes > kMostChangesTold)
    text += "; and " + std::to_string(changes - kMostChangesTold) + " times before";
  return text;
}

void AnswerCustomerChanges(Exchange& exchange) {
  if (!exchange.keys.IsYes(request_key::kCustomerChanges)) {
    throw platform::Failure(platform::Failure::Kind::kRefused,
                            "CUST_CHANGES is \"Y\", or left out for the customer as it is.");
  }
  const auto rows = exchange.database.Select(
      "SELECT UPDT_NBR, UPDT_TS, UPDT_USER_ID, COL_NM, OLD_TXT, NEW_TXT FROM customer_change"
      " WHERE CUST_ID = ? ORDER BY UPDT_NBR DESC, COL_NM",
      {exchange.keys.Text(request_key::kCustomer)});
  if (!rows->IsEmpty()) exchange.reply.records.push_back({platform::record_name::kCustomerChanges, rows});
}

}  // namespace server
