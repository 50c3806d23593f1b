#pragma once

#include <string>

#include "server/storage/database.h"

namespace server {

// What a search for customers looks into: of each customer one text (customer_search), folded and cut into
// words as platform::FoldForSearch does, and the longer words of it with the customers that have them
// (customer_word).

/// Words with fewer characters are in the texts only: too many customers have them.
inline constexpr std::size_t kShortestIndexedWord = 3;

/// Writes anew what does not fit the customers any more, also where they were changed by other programs,
/// within the caller's transaction. Throws Failure kUnavailable. Decision [customer-words].
void BringCustomerWordsUpToDate(Database& database);

/// The same for one customer: whoever stores, changes or removes a customer calls it in the same transaction,
/// behind the change. Throws Failure kUnavailable.
void IndexCustomer(Database& database, const std::string& id);

/// Whether there are customers that no search can find yet. Cheap: it counts.
bool LacksCustomerWords(Database& database);

}  // namespace server
