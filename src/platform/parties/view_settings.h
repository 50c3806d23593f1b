#pragma once

#include <string>
#include <string_view>

namespace platform {

/// What a user's windows remember from one start to the next: how wide a column is, which one is hidden. A
/// convenience: what cannot be written is forgotten quietly.
class ViewSettings {
 public:
  virtual ~ViewSettings() = default;
  /// "" where nothing is remembered under the name.
  virtual std::string Remembered(std::string_view name) const = 0;
  /// Instead of what was remembered under the name; "" forgets it.
  virtual void Remember(std::string_view name, std::string_view text) = 0;
};

}  // namespace platform
