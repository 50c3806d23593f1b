#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "server/wire/exchange.h"

namespace server {

/// Who answers which request.
struct Route {
  int message_type;
  /// Which requests of that type.
  bool (*Takes)(const Request& request);
  /// The keys that such a request may carry.
  std::span<const KnownKey> keys;
  bool changes;
  /// Throws Failure; what it did to the database is undone then.
  void (*Answer)(Exchange& exchange);
  /// The addresses that are verified before the transaction of the answer begins, which nobody else may wait
  /// for; null for none. Throws what Answer would throw of the same request.
  std::vector<platform::PostalAddress> (*AddressesToVerify)(Exchange& exchange) = nullptr;
};

/// Throws Failure kRefused for a request that nobody answers.
const Route& FindRoute(const Request& request);

}  // namespace server
