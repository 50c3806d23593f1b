#pragma once

#include <string>

#include "server/storage/database.h"

// Keeps the index of customers (customer_index.h) up to date.
namespace server {

/// Writes anew what does not fit the customers any more, also where they were changed by other programs,
/// within the caller's transaction. Throws Failure kUnavailable. Decision [customer-words].
void BringCustomerWordsUpToDate(Database& database);

/// The same for one customer: whoever stores, changes or removes a customer calls it in the same transaction,
/// behind the change. Throws Failure kUnavailable.
void IndexCustomer(Database& database, const std::string& id);

/// Whether there are customers that no search can find yet, or some left in it that have gone. Cheap: it
/// counts.
bool LacksCustomerWords(Database& database);

}  // namespace server
