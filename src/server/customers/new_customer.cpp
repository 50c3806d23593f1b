#include "server/customers/new_customer.h"

#include <algorithm>
#include <vector>

#include "platform/failure.h"

namespace server {
namespace {

using platform::Value;

/// The entry of server_info with the number of the customer that was added last.
constexpr const char* kLastCustomer = "last customer";

/// The table keeps the marks of returned mail under names of its own.
std::string TableColumn(const std::string& column) {
  if (column == "MAIL_RTND_IND") return "MAIL_BAD_FLG";
  return column == "RES_RTND_IND" ? "RES_BAD_FLG" : column;
}

Value OfText(const std::string& text) {
  return text.empty() ? Value() : Value(text);
}

std::int64_t LastCustomer(Database& database) {
  const auto noted = database.Select("SELECT CONTENT FROM server_info WHERE NAME = ?", {kLastCustomer});
  if (!noted->IsEmpty()) return noted->Get("CONTENT").AsInteger();
  return database
      .Select(R"(SELECT COALESCE(MAX(CAST(CUST_ID AS INTEGER)), 0) AS LAST_NBR FROM
                   (SELECT CUST_ID FROM customer UNION ALL SELECT CUST_ID FROM customer_change) AS known)")
      ->Get("LAST_NBR")
      .AsInteger();
}

/// Another program may have put customers in, and taken them out again; their history stays.
bool IsKnown(Database& database, const std::string& id) {
  return !database
              .Select(R"(SELECT 1 FROM customer WHERE CUST_ID = ?
                         UNION ALL SELECT 1 FROM customer_change WHERE CUST_ID = ? LIMIT 1)",
                      {id, id})
              ->IsEmpty();
}

}  // namespace

std::string TakeNewCustomerId(Database& database) {
  constexpr std::int64_t kFirst = 100'001;
  auto number = std::max(LastCustomer(database) + 1, kFirst);
  while (IsKnown(database, std::to_string(number))) ++number;
  database.Change("DELETE FROM server_info WHERE NAME = ?", {kLastCustomer});
  database.Change("INSERT INTO server_info (NAME, CONTENT) VALUES (?, ?)",
                  {kLastCustomer, std::to_string(number)});
  return std::to_string(number);
}

void InsertCustomer(Database& database, const std::string& id, const CustomerValues& values) {
  std::string columns = "CUST_ID, OT_BAL";
  std::string places = "?, 0";
  std::vector<Value> bound = {id};
  for (const auto& [column, text] : values) {
    columns += ", " + TableColumn(column);
    places += ", ?";
    bound.push_back(OfText(text));
  }
  database.Change("INSERT INTO customer (" + columns + ") VALUES (" + places + ")", bound);
}

void UpdateStoredCustomer(Database& database, const std::string& id, std::int64_t number,
                          const CustomerValues& before, const CustomerValues& after) {
  std::string changes = "UPDT_NBR = ?";
  std::vector<Value> bound = {number};
  for (const auto& [column, text] : after) {
    const auto old = before.find(column);
    if (old != before.end() && old->second == text) continue;
    changes += ", " + TableColumn(column) + " = ?";
    bound.push_back(OfText(text));
  }
  bound.emplace_back(id);
  database.Change("UPDATE customer SET " + changes + " WHERE CUST_ID = ?", bound);
}

std::string CountyOfOffice(Database& database) {
  const auto rows = database.Select(
      R"(SELECT county.QZ_CNTY_NBR FROM county LEFT JOIN office
             ON ZIP_PRFX <> '' AND SUBSTR(OFFICE_ZIP_CD, 1, LENGTH(ZIP_PRFX)) = ZIP_PRFX
           ORDER BY OFFICE_NBR IS NULL, OFFICE_NBR, county.QZ_CNTY_NBR LIMIT 1)");
  if (!rows->IsEmpty()) return rows->FirstText();
  throw platform::Failure(platform::Failure::Kind::kDamaged,
                          "The server's data have no county. Restore them from a backup.");
}

}  // namespace server
