#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "platform/parties/address_verifier.h"

namespace postal {

/// "passed", "suggested" or "none".
std::string_view VerdictWord(platform::AddressVerdict::Kind kind);

struct AddressCounts {
  std::size_t passed = 0;
  std::size_t suggested = 0;
  std::size_t none = 0;
  std::size_t bad_lines = 0;

  std::size_t Verified() const { return passed + suggested + none; }
};

/// Whoever has a list of addresses verified.
struct AddressListUser {
  /// Takes the lines of the result, the first of which names the columns.
  std::function<void(const std::string& record)> take;
  /// Takes a sentence about a line that is left out.
  std::function<void(const std::string& fault)> tell;
  /// Told of the counts now and then.
  std::function<void(const AddressCounts& counts)> progress = {};
  /// Whether to stop.
  std::function<bool()> is_stopped = {};
};

/// Verifies the addresses of a comma-separated table, whose first line names the columns line1, line2, city,
/// state and zip in any order, line2 may be missing, and others may be among them. The result has all columns
/// of the list, the verdict, and the address passed or suggested.
///
/// Throws Failure kDamaged where the first line is wrong, and what the verifier throws where that happens to
/// three addresses one after the other; one alone is a line that is left out.
AddressCounts VerifyAddressList(std::string_view list, platform::AddressVerifier& verifier,
                                const AddressListUser& user);

}  // namespace postal
