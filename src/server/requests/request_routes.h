#pragma once

#include <span>
#include <string_view>

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
};

/// Throws Failure kRefused for a request that nobody answers.
const Route& FindRoute(const Request& request);

}  // namespace server
