#pragma once

#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "platform/parties/user_rights.h"

namespace fakes {

/// Everybody holds every right but these.
class FakeRights : public platform::UserRights {
 public:
  std::set<std::pair<std::string, std::string>> withheld;  ///< user and right, as they are asked for

  bool Holds(std::string_view user_id, std::string_view right) const override {
    return !withheld.contains({std::string(user_id), std::string(right)});
  }
};

}  // namespace fakes
