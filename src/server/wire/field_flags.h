#pragma once

#include <cstdint>
#include <string>

/// The flag words of a data context's elements: "State", "Err" and "AddrState", as far as this server sets
/// them, and what they mean in words.
namespace server {

using FlagWord = std::uint32_t;

namespace state {
inline constexpr FlagWord kTable = 0x1;
inline constexpr FlagWord kNotFromData = 0x2;  ///< made by the server, no query behind it
inline constexpr FlagWord kSystem = 0x4;
inline constexpr FlagWord kUser = 0x8;
inline constexpr FlagWord kParagraph = 0x10;
inline constexpr FlagWord kLocal = 0x20;  ///< a value of the letter's own definition
inline constexpr FlagWord kTableRow = 0x40;
inline constexpr FlagWord kTableColumn = 0x80;
inline constexpr FlagWord kValueIsNull = 0x100;
inline constexpr FlagWord kCanDisplay = 0x200;
inline constexpr FlagWord kEditable = 0x400;
inline constexpr FlagWord kInput = 0x800;
inline constexpr FlagWord kIndirect = 0x1000;  ///< other fields are made from it
inline constexpr FlagWord kVolatile = 0x2000;  ///< another value on another day
inline constexpr FlagWord kHasFunction = 0x4000;
inline constexpr FlagWord kEof = 0x8000;
inline constexpr FlagWord kNull = 0x10000;
inline constexpr FlagWord kDefaultUsed = 0x20000;
inline constexpr FlagWord kUnselected = 0x40000;  ///< the user left this paragraph out
inline constexpr FlagWord kReferenceOptional = 0x80000;
inline constexpr FlagWord kAddressRelated = 0x100000;
inline constexpr FlagWord kMultiColumns = 0x200000;
inline constexpr FlagWord kHasError = 0x400000;
inline constexpr FlagWord kErrorInChild = 0x800000;
inline constexpr FlagWord kErrorInNonAddressChild = 0x1000000;
}  // namespace state

namespace error {
inline constexpr FlagWord kPopulateValue = 0x1;
inline constexpr FlagWord kExecuteFunction = 0x2;
inline constexpr FlagWord kExecuteQuery = 0x4;
inline constexpr FlagWord kNoRow = 0x8;
inline constexpr FlagWord kNull = 0x10;
inline constexpr FlagWord kEmpty = 0x20;
inline constexpr FlagWord kZero = 0x40;
inline constexpr FlagWord kInvalidInput = 0x80;
inline constexpr FlagWord kLetterIgnored = 0x100;  ///< not wrong: there is nothing to write this letter about
inline constexpr FlagWord kAddress = 0x200;
}  // namespace error

namespace address {
inline constexpr FlagWord kPostOfficeBoxExcluded = 0x1;
inline constexpr FlagWord kInStateRequired = 0x2;
inline constexpr FlagWord kOutOfStateRequired = 0x4;
inline constexpr FlagWord kMailPreferred = 0x8;
inline constexpr FlagWord kResidentialPreferred = 0x10;
inline constexpr FlagWord kMailUsed = 0x80;
inline constexpr FlagWord kResidentialUsed = 0x100;
inline constexpr FlagWord kInStateCustomer = 0x200;
inline constexpr FlagWord kMailMissing = 0x800;
inline constexpr FlagWord kMailFailedVerification = 0x2000;
inline constexpr FlagWord kMailHasPostOfficeBox = 0x8000;
inline constexpr FlagWord kMailMarkedBad = 0x20000;
inline constexpr FlagWord kMailStateNotAsRequired = 0x80000;
inline constexpr FlagWord kAllWarnings = 0x1FF800;
inline constexpr FlagWord kProcessingError = 0x2000000;
inline constexpr FlagWord kDatabaseError = 0x4000000;
inline constexpr FlagWord kVerificationError = 0x8000000;
inline constexpr FlagWord kUnknownVerification = 0x10000000;
inline constexpr FlagWord kNoUsableAddress = 0x20000000;
/// Each residential warning is the bit after the mailing one.
inline constexpr int kResidentialShift = 1;
}  // namespace address

/// Capital hexadecimal digits without leading zeros.
std::string FlagText(FlagWord word);

/// What the word says, as a list for a person ("Table row, empty in the data"); "" where it says nothing.
std::string ExplainType(FlagWord state);
std::string ExplainAttributes(FlagWord state);
std::string ExplainState(FlagWord state);
std::string ExplainErrors(FlagWord state, FlagWord error);
std::string ExplainAddress(FlagWord address);

}  // namespace server
