#pragma once

#include <string>
#include <utility>

namespace platform {

/// One criterion of a request. The texts are sent unchanged, blanks included.
struct KeyItem {
  std::string System;    ///< system code, normally "KORVADSK"
  std::string Key;       ///< "key:CUST_ID", "key: LTR_TYP_ID"
  std::string Operator;  ///< "=" or "between"
  std::string Value;     ///< for "between" the two bounds joined by " and "

  bool operator==(const KeyItem&) const = default;
};

/// A criterion of the correspondence system itself.
inline KeyItem Criterion(std::string key, std::string value, std::string comparison = "=") {
  return {"KORVADSK", std::move(key), std::move(comparison), std::move(value)};
}

}  // namespace platform
