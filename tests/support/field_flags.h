#pragma once

#include <array>

#include "platform/agreed/field_flags.h"

namespace tests {

struct FieldFlag {
  const char* name;  ///< as docs/demo-data.md calls it
  const char* word;  ///< the attribute
  int bit;           ///< meant literally: stored letters and other programs hold to it
  platform::FlagWord bits;
};

/// Every flag that a field can have.
inline constexpr auto kFieldFlags = std::to_array<FieldFlag>({
    {"table", "State", 0, platform::field_state::kTable},
    {"not-from-data", "State", 1, platform::field_state::kNotFromData},
    {"system", "State", 2, platform::field_state::kSystem},
    {"user", "State", 3, platform::field_state::kUser},
    {"paragraph", "State", 4, platform::field_state::kParagraph},
    {"local", "State", 5, platform::field_state::kLocal},
    {"table-row", "State", 6, platform::field_state::kTableRow},
    {"table-column", "State", 7, platform::field_state::kTableColumn},
    {"value-is-null", "State", 8, platform::field_state::kValueIsNull},
    {"can-display", "State", 9, platform::field_state::kCanDisplay},
    {"editable", "State", 10, platform::field_state::kEditable},
    {"input", "State", 11, platform::field_state::kInput},
    {"indirect", "State", 12, platform::field_state::kIndirect},
    {"volatile", "State", 13, platform::field_state::kVolatile},
    {"function", "State", 14, platform::field_state::kHasFunction},
    {"eof", "State", 15, platform::field_state::kEof},
    {"null", "State", 16, platform::field_state::kNull},
    {"default-used", "State", 17, platform::field_state::kDefaultUsed},
    {"unselected", "State", 18, platform::field_state::kUnselected},
    {"reference-optional", "State", 19, platform::field_state::kReferenceOptional},
    {"address-related", "State", 20, platform::field_state::kAddressRelated},
    {"multi-columns", "State", 21, platform::field_state::kMultiColumns},
    {"has-error", "State", 22, platform::field_state::kHasError},
    {"error-in-child", "State", 23, platform::field_state::kErrorInChild},
    {"error-in-non-address-child", "State", 24, platform::field_state::kErrorInNonAddressChild},
    {"err-populate", "Err", 0, platform::field_error::kPopulateValue},
    {"err-function", "Err", 1, platform::field_error::kExecuteFunction},
    {"err-query", "Err", 2, platform::field_error::kExecuteQuery},
    {"err-no-row", "Err", 3, platform::field_error::kNoRow},
    {"err-null", "Err", 4, platform::field_error::kNull},
    {"err-empty", "Err", 5, platform::field_error::kEmpty},
    {"err-zero", "Err", 6, platform::field_error::kZero},
    {"err-input", "Err", 7, platform::field_error::kInvalidInput},
    {"err-ignored", "Err", 8, platform::field_error::kLetterIgnored},
    {"err-address", "Err", 9, platform::field_error::kAddress},
    {"no-po-box", "AddrState", 0, platform::field_address::kPostOfficeBoxExcluded},
    {"in-state", "AddrState", 1, platform::field_address::kInStateRequired},
    {"out-of-state", "AddrState", 2, platform::field_address::kOutOfStateRequired},
    {"prefer-mail", "AddrState", 3, platform::field_address::kMailPreferred},
    {"prefer-residential", "AddrState", 4, platform::field_address::kResidentialPreferred},
    {"mail-used", "AddrState", 7, platform::field_address::kMailUsed},
    {"residential-used", "AddrState", 8, platform::field_address::kResidentialUsed},
    {"in-state-customer", "AddrState", 9, platform::field_address::kInStateCustomer},
    {"mail-missing", "AddrState", 11, platform::field_address::kMailMissing},
    {"residential-missing", "AddrState", 12, platform::field_address::kResidentialMissing},
    {"mail-failed", "AddrState", 13, platform::field_address::kMailFailedVerification},
    {"residential-failed", "AddrState", 14, platform::field_address::kResidentialFailedVerification},
    {"mail-po-box", "AddrState", 15, platform::field_address::kMailHasPostOfficeBox},
    {"residential-po-box", "AddrState", 16, platform::field_address::kResidentialHasPostOfficeBox},
    {"mail-bad", "AddrState", 17, platform::field_address::kMailMarkedBad},
    {"residential-bad", "AddrState", 18, platform::field_address::kResidentialMarkedBad},
    {"mail-state", "AddrState", 19, platform::field_address::kMailStateNotAsRequired},
    {"residential-state", "AddrState", 20, platform::field_address::kResidentialStateNotAsRequired},
    {"address-processing", "AddrState", 25, platform::field_address::kProcessingError},
    {"address-database", "AddrState", 26, platform::field_address::kDatabaseError},
    {"address-verification", "AddrState", 27, platform::field_address::kVerificationError},
    {"address-unknown-status", "AddrState", 28, platform::field_address::kUnknownVerification},
    {"no-usable-address", "AddrState", 29, platform::field_address::kNoUsableAddress},
});

}  // namespace tests
