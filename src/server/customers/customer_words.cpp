#include "server/customers/customer_words.h"

#include <vector>

#include "server/customers/customer_index.h"
#include "server/customers/customer_query.h"

namespace server {
namespace {

constexpr std::int64_t kAtATime = 10'000;
// So many are put in one by one; with more, all of them at once are faster.
constexpr std::size_t kMostOneByOne = 2'000;
// The same for those that are noted: of so many customers one.
constexpr std::int64_t kOneByOneOf = 20;
// With fewer it is done before anybody wonders.
constexpr std::int64_t kTakesSeconds = 50'000;

struct ChangedCustomer {
  std::string id;
  CustomerKeywords keywords;
};

/// Calls `take(rows, row)` with each customer, as long as it returns true. The rows have what the index holds
/// of it as well.
template <typename Take>
void ForEachCustomer(Database& database, Take&& take) {
  std::string last;
  for (;;) {
    const auto customers = database.Select(
        R"(SELECT customer.*, customer_search.SRT_NM, customer_search.SRCH_TXT FROM customer
             LEFT JOIN customer_search ON customer_search.CUST_ID = customer.CUST_ID
           WHERE customer.CUST_ID > ? ORDER BY customer.CUST_ID LIMIT ?)",
        {last, kAtATime});
    if (customers->IsEmpty()) return;
    for (std::size_t row = 0; row < customers->RecordCount(); ++row) {
      if (!take(*customers, row)) return;
    }
    last = customers->Text(customers->RecordCount() - 1, "CUST_ID");
  }
}

std::int64_t Count(Database& database, const std::string& table) {
  return database.Select("SELECT COUNT(*) AS NUMBER_OF FROM " + table)->Get("NUMBER_OF").AsInteger();
}

void TakeOutThoseThatHaveGone(Database& database) {
  const auto gone = database.Select(
      "SELECT CUST_ID FROM customer_search WHERE CUST_ID NOT IN (SELECT CUST_ID FROM customer)");
  for (std::size_t row = 0; row < gone->RecordCount(); ++row)
    TakeOutOfCustomerIndex(database, gone->Text(row, "CUST_ID"));
}

/// Those that the index does not fit, but no more than are put in one by one and one.
std::vector<ChangedCustomer> Changed(Database& database) {
  std::vector<ChangedCustomer> changed;
  ForEachCustomer(database, [&](const platform::RecordSet& customers, std::size_t row) {
    auto keywords = KeywordsOf(customers, row);
    if (keywords.text != customers.Text(row, "SRCH_TXT") ||
        keywords.sort_name != customers.Text(row, "SRT_NM")) {
      changed.push_back({customers.Text(row, "CUST_ID"), std::move(keywords)});
    }
    return changed.size() <= kMostOneByOne;
  });
  return changed;
}

void FillIndex(Database& database) {
  CustomerIndexFilling filling(database);
  ForEachCustomer(database, [&](const platform::RecordSet& customers, std::size_t row) {
    filling.Add(customers.Text(row, "CUST_ID"), KeywordsOf(customers, row));
    return true;
  });
  filling.Finish();
  ForgetCustomersToIndex(database);
}

bool ManyAreNoted(Database& database) {
  return CountCustomersToIndex(database) > Count(database, "customer") / kOneByOneOf;
}

}  // namespace

void BringCustomerWordsUpToDate(Database& database) {
  TakeOutThoseThatHaveGone(database);
  const auto changed = Changed(database);
  if (changed.size() > kMostOneByOne || Count(database, "customer_search") == 0) return FillIndex(database);
  for (const auto& [id, keywords] : changed) PutIntoCustomerIndex(database, id, keywords);
  ForgetCustomersToIndex(database);
}

void CatchUpWithCustomers(Database& database) {
  if (ManyAreNoted(database)) return FillIndex(database);
  for (const auto& id : CustomersToIndex(database)) IndexCustomer(database, id);
}

void IndexCustomer(Database& database, const std::string& id) {
  const auto customer = database.Select("SELECT * FROM customer WHERE CUST_ID = ?", {id});
  if (customer->IsEmpty())
    TakeOutOfCustomerIndex(database, id);
  else
    PutIntoCustomerIndex(database, id, KeywordsOf(*customer, 0));
  ForgetCustomerToIndex(database, id);
}

bool LacksCustomerWords(Database& database) {
  return HasCustomersToIndex(database);
}

std::string WhyIndexingTakesLong(Database& database, bool is_upgrade) {
  const auto customers = Count(database, "customer");
  if (customers < kTakesSeconds || !(is_upgrade || ManyAreNoted(database))) return "";
  return "The index of " + std::to_string(customers) +
         " customers is being made. That can take minutes; what you asked for comes then.";
}

}  // namespace server
