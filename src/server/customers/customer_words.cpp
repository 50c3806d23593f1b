#include "server/customers/customer_words.h"

#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <string_view>

#include "platform/search_text.h"
#include "platform/text.h"
#include "server/subject/letter_text.h"

namespace server {
namespace {

using platform::RecordSet;

constexpr std::int64_t kAtATime = 10'000;

constexpr auto kSearched = std::to_array<std::string_view>(
    {"CUST_ID", "CUST_BSNS_NM", "FIRST_NM", "LAST_NM", "MAIL_CITY", "RES_CITY", "ACCNT_NBR"});

/// The account stands in it twice, as it is stored and as letters show it.
std::string SearchText(const RecordSet& customers, std::size_t row) {
  std::string text;
  for (const auto column : kSearched) text += customers.Text(row, column) + " ";
  return platform::FoldForSearch(text + FuelTaxAccountInLetter(customers.Text(row, "ACCNT_NBR")));
}

std::set<std::string> IndexedWords(std::string_view search_text) {
  std::set<std::string> words;
  for (auto& word : platform::SearchWords(search_text)) {
    if (platform::CharacterCount(word) >= kShortestIndexedWord) words.insert(std::move(word));
  }
  return words;
}

void StoreWords(Database& database, const std::string& customer, const std::string& text,
                const std::string& stored_text) {
  for (const auto& word : IndexedWords(stored_text)) {
    database.Change("DELETE FROM customer_word WHERE WORD = ? AND CUST_ID = ?", {word, customer});
  }
  for (const auto& word : IndexedWords(text)) {
    database.Change("INSERT INTO customer_word (WORD, CUST_ID) VALUES (?, ?)", {word, customer});
  }
  database.Change("DELETE FROM customer_search WHERE CUST_ID = ?", {customer});
  database.Change("INSERT INTO customer_search (CUST_ID, SRCH_TXT) VALUES (?, ?)", {customer, text});
}

std::int64_t Count(Database& database, const std::string& table) {
  return database.Select("SELECT COUNT(*) AS NUMBER_OF FROM " + table)->Get("NUMBER_OF").AsInteger();
}

}  // namespace

void BringCustomerWordsUpToDate(Database& database) {
  std::string last;
  for (;;) {
    const auto customers = database.Select(
        R"(SELECT customer.*, customer_search.SRCH_TXT FROM customer
             LEFT JOIN customer_search ON customer_search.CUST_ID = customer.CUST_ID
           WHERE customer.CUST_ID > ? ORDER BY customer.CUST_ID LIMIT ?)",
        {last, kAtATime});
    if (customers->IsEmpty()) return;
    for (std::size_t row = 0; row < customers->RecordCount(); ++row) {
      last = customers->Text(row, "CUST_ID");
      const auto text = SearchText(*customers, row);
      const auto stored = customers->Text(row, "SRCH_TXT");
      if (text != stored) StoreWords(database, last, text, stored);
    }
  }
}

void IndexCustomer(Database& database, const std::string& id) {
  const auto customer = database.Select("SELECT * FROM customer WHERE CUST_ID = ?", {id});
  const auto stored = database.Select("SELECT SRCH_TXT FROM customer_search WHERE CUST_ID = ?", {id});
  // The text of a customer that has gone went with it.
  if (!customer->IsEmpty())
    StoreWords(database, id, SearchText(*customer, 0), stored->IsEmpty() ? "" : stored->FirstText());
}

bool LacksCustomerWords(Database& database) {
  return Count(database, "customer") != Count(database, "customer_search");
}

}  // namespace server
