#pragma once

#include <string_view>

namespace platform {

/// Who may do what, as the office has set it on the server's side. Constant while a program runs.
class UserRights {
 public:
  virtual ~UserRights() = default;

  /// Whether the user holds a right (agreed/rights.h). User ids are compared without regard to case and to
  /// blanks around them.
  virtual bool Holds(std::string_view user_id, std::string_view right) const = 0;
};

}  // namespace platform
