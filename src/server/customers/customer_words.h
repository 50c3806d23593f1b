#pragma once

#include <string>

#include "server/storage/database.h"

// Keeps the index of customers (customer_index.h) up to date.
namespace server {

/// Compares the index with all customers and writes anew what does not fit, within the caller's transaction.
/// Throws Failure kUnavailable. Decision [customer-words].
void BringCustomerWordsUpToDate(Database& database);

/// The same for the customers that other programs have put in, changed or taken out.
void CatchUpWithCustomers(Database& database);

/// The same for one customer: whoever stores, changes or removes a customer calls it in the same transaction,
/// behind the change. Throws Failure kUnavailable.
void IndexCustomer(Database& database, const std::string& id);

/// Whether there are such customers. Takes no longer where the register is large.
bool LacksCustomerWords(Database& database);

/// A sentence for who waits while all customers are put into the index, as CatchUpWithCustomers would, or
/// after an upgrade; "" where that takes seconds at most.
std::string WhyIndexingTakesLong(Database& database, bool is_upgrade);

}  // namespace server
