#pragma once

#include <string>
#include <string_view>

#include "platform/parties/error_reporter.h"

namespace customers {

/// Numbers as a page shows them. A text of another length than expected comes back unchanged, and so does one
/// for which an encoder fails, which is reported under its own name.
class DisplayEncoders {
 public:
  /// `errors` outlives the encoders.
  explicit DisplayEncoders(platform::ErrorReporter& errors) : errors_(errors) {}

  /// Nine characters become five, "-", four.
  std::string EncodeZipCode(std::string_view zip) const;

  /// Thirteen characters become two, "-", nine, "-", two.
  std::string EncodeFuelTaxAccountNbr(std::string_view account) const;

  /// Only the decimal digits: seven as "ddd-dddd", ten as "(ddd) ddd-dddd", any other count plain.
  std::string FormatPhone(std::string_view phone) const;

 private:
  platform::ErrorReporter& errors_;
};

}  // namespace customers
