#pragma once

#include <cstdint>
#include <string>

#include "customers/maintenance/customer_controls.h"
#include "platform/parties/services.h"

namespace customers {

/// The key that stands for pasting: control and V.
inline constexpr std::int16_t kPasteKey = 22;

/// Which keys and pasted texts the fields of a customer take. A failure refuses the key and is reported.
class KeyFilters {
 public:
  /// `services` outlives the filters.
  explicit KeyFilters(const platform::Services& services) : services_(services) {}

  // `accepted` tells whether the key is taken, as which one `key` says afterwards. kPasteKey is judged by
  // what the clipboard holds.
  /// Letters from A to Z, and what names are written with.
  void AllowKeyPressToPassName(std::int16_t& key, bool& accepted) const;
  /// The same with blanks and periods; letters become capitals.
  void AllowKeyPressToPassCity(std::int16_t& key, bool& accepted) const;

  /// Whether a text may be pasted into a field of that kind. "%" stands for any characters of a name.
  bool PastesAsName(const std::string& text) const;
  bool PastesAsCity(const std::string& text) const;
  bool PastesAsZip(const std::string& text) const;

  /// Lengths and filters of all text fields. The filters outlive the controls.
  void Govern(CustomerControls& controls) const;

 private:
  const platform::Services& services_;
};

}  // namespace customers
