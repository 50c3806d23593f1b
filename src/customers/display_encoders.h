#pragma once

#include <string>
#include <string_view>

namespace customers {

// Numbers as a page shows them. A text of another length than expected comes back unchanged.

/// Nine characters become five, "-", four.
std::string EncodeZipCode(std::string_view zip);

/// Thirteen characters become two, "-", nine, "-", two.
std::string EncodeFuelTaxAccountNbr(std::string_view account);

/// Only the decimal digits: seven as "ddd-dddd", ten as "(ddd) ddd-dddd", any other count plain.
std::string FormatPhone(std::string_view phone);

}  // namespace customers
