#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace server {

/// What a letter definition says about a field besides kind and source: bits of `rule`.
using FieldRules = std::uint32_t;

namespace rule {
inline constexpr FieldRules kIndirect = 0x1;  ///< only there for other fields to be made from
inline constexpr FieldRules kReferenceOptional = 0x2;
inline constexpr FieldRules kAmount = 0x4;  ///< the query gives cents
inline constexpr FieldRules kDay = 0x8;     ///< the query gives "yyyy-mm-dd"
inline constexpr FieldRules kOpenDocument = 0x10;
inline constexpr FieldRules kNoPostOfficeBox = 0x20;
inline constexpr FieldRules kInState = 0x40;
inline constexpr FieldRules kOutOfState = 0x80;
inline constexpr FieldRules kPreferMail = 0x100;
inline constexpr FieldRules kPreferResidential = 0x200;
inline constexpr FieldRules kOneOf = 0x400;  ///< the letter needs at least one paragraph of its group

/// What may be asked of the address that a letter goes to.
inline constexpr FieldRules kOfAddress =
    kNoPostOfficeBox | kInState | kOutOfState | kPreferMail | kPreferResidential;
inline constexpr FieldRules kOfQuery = kAmount | kDay;
inline constexpr FieldRules kOfFunction = kIndirect | kReferenceOptional;
}  // namespace rule

/// Reads words separated by blanks ("AMOUNT INDIRECT"); nothing where one of them is no rule, or a paragraph
/// is to be of two groups.
std::optional<FieldRules> ReadRules(std::string_view words);
/// The group that the rule ONE_OF:GROUP among the words names; "" where there is none.
std::string ParagraphGroup(std::string_view words);

}  // namespace server
