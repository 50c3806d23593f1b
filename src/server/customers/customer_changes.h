#pragma once

#include <cstdint>
#include <string>

#include "server/customers/given_customer.h"
#include "server/wire/exchange.h"

namespace server {

/// Keeps what differs between the two as the change of that number, by the request's user and at its time.
/// Returns whether anything does.
bool StoreCustomerChanges(Exchange& exchange, const std::string& customer, std::int64_t number,
                          const CustomerValues& before, const CustomerValues& after);

/// The number that the next change of a customer gets. A customer that was deleted and put back under its id
/// has a history that goes further than its own number.
std::int64_t NextChange(Database& database, const std::string& customer);

/// Who changed what when since the change of that number, in a clause in a clerk's words: the newest changes,
/// and how many more there were. "a program that keeps no history" where nothing was kept.
std::string ChangesSince(Database& database, const std::string& customer, std::int64_t number);

/// Answers the key CUST_ID, with CUST_CHANGES "Y", with that customer's history: record "CUSTOMER_CHANGE",
/// the newest change first. Without a change there is no record. Throws Failure kRefused for another value.
void AnswerCustomerChanges(Exchange& exchange);

}  // namespace server
