#pragma once

#include <cstdint>
#include <string>

/// The flag words of a data context's elements: "State", "Err" and "AddrState", as far as this server sets
/// them, and what they mean in words.
namespace server {

using FlagWord = std::uint32_t;

namespace state {
inline constexpr FlagWord kTable = 0x1;
inline constexpr FlagWord kSystem = 0x4;
inline constexpr FlagWord kUser = 0x8;
inline constexpr FlagWord kParagraph = 0x10;
inline constexpr FlagWord kTableRow = 0x40;
inline constexpr FlagWord kTableColumn = 0x80;
inline constexpr FlagWord kValueIsNull = 0x100;
inline constexpr FlagWord kCanDisplay = 0x200;
inline constexpr FlagWord kEditable = 0x400;
inline constexpr FlagWord kInput = 0x800;
inline constexpr FlagWord kEof = 0x8000;
inline constexpr FlagWord kNull = 0x10000;
inline constexpr FlagWord kAddressRelated = 0x100000;
inline constexpr FlagWord kMultiColumns = 0x200000;
inline constexpr FlagWord kHasError = 0x400000;
inline constexpr FlagWord kErrorInChild = 0x800000;
inline constexpr FlagWord kErrorInNonAddressChild = 0x1000000;
}  // namespace state

namespace error {
inline constexpr FlagWord kNoRow = 0x8;
inline constexpr FlagWord kNull = 0x10;
inline constexpr FlagWord kEmpty = 0x20;
inline constexpr FlagWord kZero = 0x40;
inline constexpr FlagWord kAddress = 0x200;
}  // namespace error

namespace address {
inline constexpr FlagWord kMailUsed = 0x80;
inline constexpr FlagWord kResidentialUsed = 0x100;
inline constexpr FlagWord kInStateCustomer = 0x200;
inline constexpr FlagWord kMailMissing = 0x800;
inline constexpr FlagWord kMailFailedVerification = 0x2000;
inline constexpr FlagWord kMailHasPostOfficeBox = 0x8000;
inline constexpr FlagWord kMailMarkedBad = 0x20000;
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
