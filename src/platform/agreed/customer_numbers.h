#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

/// A customer's phone and fuel tax account as they are stored, checked and shown. Windows and server ask the
/// same functions. Decision [customer-numbers].
namespace platform {

/// The decimal digits of a text, in their order.
std::string DigitsOf(std::string_view text);

/// Ten digits whose area code and exchange (the first and the fourth digit) begin with neither 0 nor 1; ""
/// as well: a customer may have no phone.
bool IsPhoneNumber(std::string_view digits);
/// Thirteen digits: two for the kind of account, nine for its number, two for the place it is held for; the
/// number and the place are counted from one. "" as well: not every customer holds an account.
bool IsFuelTaxAccount(std::string_view digits);

/// Why they are not, for a person; "" where they are.
std::string WhyNoPhoneNumber(std::string_view digits);
std::string WhyNoFuelTaxAccount(std::string_view digits);

/// Ten digits as "(ddd) ddd-dddd", seven as "ddd-dddd"; any other text unchanged.
std::string ShownPhone(std::string_view digits);
/// Thirteen characters as two, "-", nine, "-", two; any other text unchanged.
std::string ShownFuelTaxAccount(std::string_view digits);

/// The characters of a text in groups of these sizes with hyphens between; a text of another length than all
/// of them together unchanged.
std::string InGroups(std::string_view text, std::initializer_list<std::size_t> sizes);

}  // namespace platform
