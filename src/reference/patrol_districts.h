#pragma once

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "platform/parties/reference_database.h"

namespace reference {

/// The highway patrol's troops, "A", and their districts, "1": those that patrol a county. Compared exactly:
/// troops are capital letters. The database is read at the first question and outlives this.
class PatrolDistricts {
 public:
  explicit PatrolDistricts(platform::ReferenceDatabase& reference) : reference_(reference) {}

  // Both throw what Select throws.
  bool HasTroop(std::string_view troop);
  bool HasDistrict(std::string_view troop, std::string_view district);

 private:
  using Districts = std::set<std::string, std::less<>>;
  using Troops = std::map<std::string, Districts, std::less<>>;
  const Troops& Read();

  platform::ReferenceDatabase& reference_;
  std::optional<Troops> troops_;
};

}  // namespace reference
