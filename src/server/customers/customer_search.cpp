#include "server/customers/customer_search.h"

#include <algorithm>
#include <string>
#include <vector>

#include "platform/search_text.h"
#include "platform/text.h"
#include "server/customers/customer_words.h"

namespace server {
namespace {

using platform::Value;
using Rows = std::shared_ptr<platform::RecordSet>;
using Words = std::vector<std::string>;

// Behind every word that begins with what stands before it.
constexpr const char* kLastCharacter = "\U0010FFFF";
// A table is looked through in the order of its key, so that a limit ends it.
constexpr const char* kIndexed =
    "CUST_ID IN (SELECT CUST_ID FROM customer_word WHERE WORD >= ? AND WORD < ?) AND ";

enum class Way { kByIndex, kThroughAll };

/// Words hold letters and digits only, no wildcard.
Rows SelectByWords(Database& database, const Words& words, Way way, std::size_t limit) {
  std::string statement =
      "SELECT * FROM customer WHERE CUST_ID IN (SELECT CUST_ID FROM customer_search WHERE ";
  std::vector<Value> values;
  if (way == Way::kByIndex) {
    statement += kIndexed;
    values = {words.front(), words.front() + kLastCharacter};
  }
  std::string_view joint = "SRCH_TXT LIKE ? ";
  for (const auto& word : words) {
    statement += joint;
    values.emplace_back("%" + word + "%");
    joint = "AND SRCH_TXT LIKE ? ";
  }
  values.emplace_back(limit);
  return database.Select(statement + "ORDER BY CUST_ID LIMIT ?) ORDER BY CUST_ID", values);
}

Rows SelectNobody(Database& database) {
  return database.Select("SELECT * FROM customer WHERE 1 = 0");
}

}  // namespace

Rows FindCustomers(Database& database, std::string_view text, std::size_t limit) {
  if (platform::Trim(text).empty()) {
    return database.Select("SELECT * FROM customer ORDER BY CUST_ID LIMIT ?", {limit});
  }
  auto words = platform::SearchWords(text);
  if (words.empty()) return SelectNobody(database);
  // The longest word narrows the search most.
  std::ranges::stable_sort(words, std::ranges::greater(), platform::CharacterCount);
  if (platform::CharacterCount(words.front()) >= kShortestIndexedWord) {
    auto found = SelectByWords(database, words, Way::kByIndex, limit);
    if (!found->IsEmpty()) return found;
  }
  return SelectByWords(database, words, Way::kThroughAll, limit);
}

}  // namespace server
