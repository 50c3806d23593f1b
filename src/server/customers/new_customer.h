#pragma once

#include <cstdint>
#include <string>

#include "server/customers/given_customer.h"
#include "server/storage/database.h"

namespace server {

/// An id that no customer has had, whoever has gone meanwhile. Written down in the caller's transaction.
std::string TakeNewCustomerId(Database& database);

/// Stores a new customer, or what differs of one that there is, as the change of that number.
void InsertCustomer(Database& database, const std::string& id, const CustomerValues& values);
void UpdateStoredCustomer(Database& database, const std::string& id, std::int64_t number,
                          const CustomerValues& before, const CustomerValues& after);

/// The county of the office's zip code, else the first one that is stored.
std::string CountyOfOffice(Database& database);

}  // namespace server
