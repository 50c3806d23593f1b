#pragma once

#include <string_view>

/// The attributes that elements of a letter's data context may carry: the server writes them, workspace,
/// merge and command line read them.
namespace platform::field_attribute {

// Flag words, see field_flags.h.
inline constexpr std::string_view kState = "State";
inline constexpr std::string_view kErrors = "Err";
inline constexpr std::string_view kAddressState = "AddrState";

/// Which paragraphs are alternatives: the letter needs at least one of those with the same text here.
inline constexpr std::string_view kGroup = "OneOf";

// What there is to explain, for a person.
inline constexpr std::string_view kDescription = "V_EnglishDesc";
inline constexpr std::string_view kExplainedAddress = "V_ExplainAddr";
inline constexpr std::string_view kExplainedType = "V_ExplainType";
inline constexpr std::string_view kExplainedState = "V_ExplainState";
inline constexpr std::string_view kExplainedAttributes = "V_ExplainAttr";
inline constexpr std::string_view kExplainedErrors = "V_ExplainErr";
inline constexpr std::string_view kRawValue = "RawValue";  ///< as the data hold it

}  // namespace platform::field_attribute
