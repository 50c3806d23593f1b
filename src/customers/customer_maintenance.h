#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/parties/services.h"

namespace customers {

/// How customers are changed and added from where one is chosen. An empty step is not offered.
struct CustomerMaintenance {
  /// Told the id of the customer that was saved, at once or later; not called where none was.
  using Saved = std::function<void(const std::string& customer_id)>;

  std::function<void(const std::string& customer_id, Saved saved)> edit = {};
  /// `typed` is what nobody was found by: it is offered as the new customer's name or account.
  std::function<void(const std::string& typed, Saved saved)> add = {};
  /// What was begun and is not on the screen yet is not wanted any more.
  std::function<void()> forget = {};
};

/// Opens the maintenance dialog over whatever stands. A new customer is asked about first: a business or an
/// individual. What is begun takes the place of a customer that is still on the way. `services` and
/// `message_title`, as it is then, outlive the result.
CustomerMaintenance MaintenanceOver(const platform::Services& services, const std::string& message_title);

/// A typed text as seeds of a new business (name, account, city) or individual (first and last name, account,
/// city). Thirteen digits are an account; another text with digits is none of these.
std::vector<std::string> BusinessSeeds(std::string_view typed);
std::vector<std::string> IndividualSeeds(std::string_view typed);

}  // namespace customers
