#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "server/customers/customer_query.h"
#include "server/storage/database.h"

/// The index of what customers are found by: the one place that knows how this engine looks words up.
/// Decision [customer-words].
namespace server {

/// How well a customer fits, the best first.
enum class CustomerFit { kNumber, kNameStart, kOther };

/// Makes the empty index: of each customer the keywords (customer_search) under a position that follows the
/// order of the names, and the words with the positions that have them (customer_index).
void CreateCustomerIndex(Database& database);

/// From now on the database itself notes who is put in, taken out, or changed in what they are found by, by
/// whichever program (customer_to_index). Nothing happens where it does already. The customers' table is
/// there.
void NoteCustomersToIndex(Database& database);
/// Those that are noted, by their ids, and how many they are.
std::vector<std::string> CustomersToIndex(Database& database);
std::int64_t CountCustomersToIndex(Database& database);
bool HasCustomersToIndex(Database& database);
/// Takes that note away, or all of them: the index is as it should be.
void ForgetCustomerToIndex(Database& database, const std::string& id);
void ForgetCustomersToIndex(Database& database);

/// Makes the index anew, for all customers at once: much faster than one by one.
class CustomerIndexFilling {
 public:
  /// Empties the index.
  explicit CustomerIndexFilling(Database& database);
  void Add(const std::string& id, const CustomerKeywords& keywords);
  /// Puts those that were added into the index; nobody is in it before.
  void Finish();

 private:
  Database& database_;
};

/// Puts a customer in or changes what it is found by; nothing happens where it stands in the index as it
/// should.
void PutIntoCustomerIndex(Database& database, const std::string& id, const CustomerKeywords& keywords);
void TakeOutOfCustomerIndex(Database& database, const std::string& id);

/// The ids of those that fit so and no better, by their names, without the first `skipped`; at most `limit`.
std::vector<std::string> FittingCustomers(Database& database, const CustomerQuery& query, CustomerFit fit,
                                          std::int64_t skipped, std::int64_t limit);
/// How many fit so and no better.
std::int64_t CountFitting(Database& database, const CustomerQuery& query, CustomerFit fit);
/// How many fit at all; no more than `most` are counted.
std::int64_t CountFitting(Database& database, const CustomerQuery& query, std::int64_t most);

}  // namespace server
