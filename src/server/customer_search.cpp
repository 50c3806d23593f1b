#include "server/customer_search.h"

#include <string>

#include "platform/text.h"

namespace server {
namespace {

/// `text` as a LIKE pattern that means the text itself, anywhere; "!" escapes.
std::string Anywhere(std::string_view text) {
  std::string pattern = "%";
  for (const char c : platform::LowerCase(text)) {
    if (c == '%' || c == '_' || c == '!') pattern += '!';
    pattern += c;
  }
  return pattern + "%";
}

}  // namespace

std::shared_ptr<platform::RecordSet> FindCustomers(Database& database, std::string_view text,
                                                   std::size_t limit) {
  return database.Select("SELECT * FROM customer WHERE SRCH_TXT LIKE ? ESCAPE '!' ORDER BY CUST_ID LIMIT ?",
                         {Anywhere(text), limit});
}

}  // namespace server
