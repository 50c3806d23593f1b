#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/xml/xml.h"

/// The flag words that every element of a letter's data context may carry: "State", "Err" and "AddrState".
/// The server sets them; workspace and merge read them. What is written into a letter history keeps its
/// meaning for years: no bit is ever given another one.
namespace platform {

using FlagWord = std::uint32_t;

/// "State": what kind of field it is, what is known of its value, and whether it or one below it is in error.
namespace field_state {

inline constexpr FlagWord kTable = 0x1;
inline constexpr FlagWord kNotFromData = 0x2;  ///< made by the server, no query behind it
inline constexpr FlagWord kSystem = 0x4;
inline constexpr FlagWord kUser = 0x8;        ///< the user supplies the value
inline constexpr FlagWord kParagraph = 0x10;  ///< an optional paragraph
inline constexpr FlagWord kLocal = 0x20;      ///< a value of the letter's own definition
inline constexpr FlagWord kTableRow = 0x40;
inline constexpr FlagWord kTableColumn = 0x80;
inline constexpr FlagWord kValueIsNull = 0x100;
inline constexpr FlagWord kCanDisplay = 0x200;  ///< may be shown to the user
inline constexpr FlagWord kEditable = 0x400;
inline constexpr FlagWord kInput = 0x800;      ///< an input of the letter
inline constexpr FlagWord kIndirect = 0x1000;  ///< other fields are made from it
inline constexpr FlagWord kVolatile = 0x2000;  ///< another value on another day
inline constexpr FlagWord kHasFunction = 0x4000;
inline constexpr FlagWord kEof = 0x8000;  ///< the field's query found no row
inline constexpr FlagWord kNull = 0x1'0000;
inline constexpr FlagWord kDefaultUsed = 0x2'0000;
inline constexpr FlagWord kUnselected = 0x4'0000;  ///< the user left this paragraph out
inline constexpr FlagWord kReferenceOptional = 0x8'0000;
inline constexpr FlagWord kAddressRelated = 0x10'0000;
inline constexpr FlagWord kMultiColumns = 0x20'0000;
inline constexpr FlagWord kHasError = 0x40'0000;                 ///< the field itself
inline constexpr FlagWord kErrorInChild = 0x80'0000;             ///< a field below it
inline constexpr FlagWord kErrorInNonAddressChild = 0x100'0000;  ///< one below it that is no address field

inline constexpr FlagWord kTypes =
    kTable | kNotFromData | kSystem | kUser | kParagraph | kLocal | kTableRow | kTableColumn;
inline constexpr FlagWord kAttributes =
    kValueIsNull | kCanDisplay | kEditable | kAddressRelated | kMultiColumns;
/// Without kNull and kReferenceOptional.
inline constexpr FlagWord kStates =
    kInput | kIndirect | kVolatile | kHasFunction | kEof | kDefaultUsed | kUnselected;
inline constexpr FlagWord kSummaries = kHasError | kErrorInChild | kErrorInNonAddressChild;
inline constexpr FlagWord kTypesThatMayBeEmpty = kTable | kUser | kParagraph | kTableRow;

}  // namespace field_state

/// "Err": what is wrong with the field itself.
namespace field_error {

inline constexpr FlagWord kPopulateValue = 0x1;
inline constexpr FlagWord kExecuteFunction = 0x2;
inline constexpr FlagWord kExecuteQuery = 0x4;
inline constexpr FlagWord kNoRow = 0x8;  ///< nothing was found, but there has to be
inline constexpr FlagWord kNull = 0x10;
inline constexpr FlagWord kEmpty = 0x20;
inline constexpr FlagWord kZero = 0x40;
inline constexpr FlagWord kInvalidInput = 0x80;
inline constexpr FlagWord kLetterIgnored = 0x100;  ///< not wrong: there is nothing to write this letter about
inline constexpr FlagWord kAddress = 0x200;

}  // namespace field_error

/// "AddrState": what the letter asks of an address, and how the customer's mailing and residential ones are.
namespace field_address {

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
inline constexpr FlagWord kMailMarkedBad = 0x2'0000;
inline constexpr FlagWord kMailStateNotAsRequired = 0x8'0000;
/// Each residential warning is the bit after the mailing one.
inline constexpr int kResidentialShift = 1;
inline constexpr FlagWord kResidentialMissing = kMailMissing << kResidentialShift;
inline constexpr FlagWord kResidentialFailedVerification = kMailFailedVerification << kResidentialShift;
inline constexpr FlagWord kResidentialHasPostOfficeBox = kMailHasPostOfficeBox << kResidentialShift;
inline constexpr FlagWord kResidentialMarkedBad = kMailMarkedBad << kResidentialShift;
inline constexpr FlagWord kResidentialStateNotAsRequired = kMailStateNotAsRequired << kResidentialShift;
inline constexpr FlagWord kProcessingError = 0x200'0000;
inline constexpr FlagWord kDatabaseError = 0x400'0000;
inline constexpr FlagWord kVerificationError = 0x800'0000;
inline constexpr FlagWord kUnknownVerification = 0x1000'0000;
inline constexpr FlagWord kNoUsableAddress = 0x2000'0000;

inline constexpr FlagWord kRequirements =
    kPostOfficeBoxExcluded | kInStateRequired | kOutOfStateRequired | kMailPreferred | kResidentialPreferred;
inline constexpr FlagWord kAttributes = kMailUsed | kResidentialUsed | kInStateCustomer;
inline constexpr FlagWord kMailWarnings =
    kMailMissing | kMailFailedVerification | kMailHasPostOfficeBox | kMailMarkedBad | kMailStateNotAsRequired;
inline constexpr FlagWord kResidentialWarnings = kMailWarnings << kResidentialShift;
inline constexpr FlagWord kAllWarnings = kMailWarnings | kResidentialWarnings;
inline constexpr FlagWord kErrors =
    kProcessingError | kDatabaseError | kVerificationError | kUnknownVerification | kNoUsableAddress;

}  // namespace field_address

/// Nothing where the text is no hexadecimal number of one to eight digits, of either case.
std::optional<FlagWord> ParseFlagWord(std::string_view text);

/// The word in that attribute, 0 where it is absent. Throws Failure kDamaged, naming element, attribute and
/// text, where it holds no flag word.
FlagWord ReadFlagWord(const XmlElement& element, std::string_view attribute);

/// Capital hexadecimal digits without leading zeros; "0" for none.
std::string FlagText(FlagWord word);

}  // namespace platform
