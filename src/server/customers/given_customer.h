#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "platform/parties/address_verifier.h"
#include "platform/record_set.h"
#include "server/storage/database.h"

namespace server {

/// The columns of a customer that a save may change, by the record's names; "" for null. The names of the
/// counties are not among them.
using CustomerValues = std::map<std::string, std::string, std::less<>>;

inline constexpr std::string_view kMailPrefix = "MAIL_";
inline constexpr std::string_view kResidentialPrefix = "RES_";

/// Those of a customer as it is stored; nothing where there is none.
std::optional<CustomerValues> FindCustomerValues(Database& database, const std::string& id);

/// Those that the record brings, without blanks around them, phone and zip codes without punctuation, states
/// in capitals. What is null or left out is not among them; what differs from `before` in that form only
/// comes as it is there. Throws Failure kRefused for a mark of no characters.
CustomerValues GivenCustomerValues(const platform::RecordSet& rows, const CustomerValues& before);

/// What a clerk calls a column that a save may bring, "mailing city"; "" for one that only the server sets.
std::string_view WordsForColumn(std::string_view column);

/// Who has a last name is a person; everybody else is a business. Decision [customer-type].
bool IsIndividual(const CustomerValues& values);
/// Whether any line, city, state or zip code is there.
bool HasAddress(const CustomerValues& values, std::string_view prefix);
/// Without its county.
platform::PostalAddress AddressOf(const CustomerValues& values, std::string_view prefix);
void SetAddress(CustomerValues& values, std::string_view prefix, const platform::PostalAddress& address);

/// That `after`, made from `before`, may be stored: what differs is held to its length, its characters and
/// whether it may be missing. `before` is empty for a new customer. Throws Failure kRefused naming the column
/// and its value. Decision [checked-changes].
void CheckCustomer(const CustomerValues& before, const CustomerValues& after, bool individual);

}  // namespace server
