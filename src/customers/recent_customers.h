#pragma once

#include <string>
#include <vector>

#include "platform/parties/services.h"

namespace customers {

/// The customers that this user chose last, by their ids: they are kept from one start to the next.
class RecentCustomers {
 public:
  static constexpr std::size_t kMost = 20;

  /// `services` outlives this.
  explicit RecentCustomers(const platform::Services& services) : services_(services) {}

  /// The one chosen last comes first.
  std::vector<std::string> Ids() const;
  /// The customer was chosen. An id that could not be kept (with a comma) is not.
  void Add(const std::string& id);

 private:
  std::string Name() const;

  const platform::Services& services_;
};

}  // namespace customers
