#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/key_item.h"
#include "platform/value.h"

namespace server {

/// A criterion that a request may carry.
struct KnownKey {
  std::string_view name;
  std::string_view comparison = "=";
  std::string_view other_comparison = {};  ///< "" where there is only one
};

/// Whole local days, both ends included.
struct DayRange {
  platform::Date first;
  platform::Date last;
};

/// The criteria of one request. A key is known by what follows "key:", without blanks and without regard to
/// case: "key: LTR_TYP_ID" is LTR_TYP_ID.
class RequestKeys {
 public:
  /// `known`: what the request understands. Throws Failure kRefused for any other key, for one that comes
  /// twice, and for another operator than the key's own.
  RequestKeys(const std::vector<platform::KeyItem>& keys, std::span<const KnownKey> known);

  bool Has(std::string_view name) const { return Find(name) != nullptr; }
  /// The value without blanks at its ends; "" where the key is absent.
  std::string Text(std::string_view name) const;
  /// Whether the value is "Y"; false where the key is absent. Throws Failure kRefused for anything but Y and
  /// N.
  bool IsYes(std::string_view name) const;
  /// Throws Failure kRefused for a value that is no whole number; nothing where the key is absent.
  std::optional<std::int64_t> Number(std::string_view name) const;
  /// One day ("=") or two and all between them ("between", "A and B"). Throws Failure kRefused for what is no
  /// such thing, and for a first day after the last; nothing where the key is absent.
  std::optional<DayRange> Days(std::string_view name) const;

 private:
  struct Entry {
    std::string name;
    std::string comparison;
    std::string value;
  };
  const Entry* Find(std::string_view name) const;

  std::vector<Entry> entries_;
};

/// The name a key is known by.
std::string KeyName(std::string_view key);

}  // namespace server
