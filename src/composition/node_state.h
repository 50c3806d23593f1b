#pragma once

#include <cstdint>

#include "platform/agreed/field_flags.h"
#include "platform/xml/xml.h"

namespace composition {

namespace field_state = platform::field_state;
namespace field_error = platform::field_error;
namespace field_address = platform::field_address;

/// The flag words of one field of a letter's data context, and every question the system asks of them.
///
/// The server marks each field's element with up to three words: "State" (the field's type, attributes and
/// summary errors), "Err" (its own errors) and "AddrState" (what the letter needs of an address, and what is
/// wrong with the customer's). Which bit means what stands in platform/agreed/field_flags.h. One instance is
/// used over and over, initialised from one element after another.
///
/// Other programs bind to the order of the operations: new ones go to the end.
class ZEMLO_NodeState {
 public:
  /// Sets the three words to 0. What was changed and not yet saved stays so: the next Save writes the 0.
  void Clear();
  /// Reads the three words, an absent attribute as 0, and forgets what was not saved.
  /// Throws Failure kDamaged, naming element, attribute and text, where a text is no hexadecimal number of
  /// one to eight digits; words read before it keep their new values. kNotFound where there is no element.
  void InitFromNode(platform::XmlElement oNode);
  /// Has no effect.
  void InitCaps(std::int32_t nVal);
  /// Has no effect; Save writes back.
  void SaveState(platform::XmlElement oNode);
  /// Writes "State" into the element where it was changed since it was read: upper-case digits without
  /// leading zeros, no attribute for 0. The other two words belong to the server and are never written.
  void Save(platform::XmlElement oNode);

  // What type of field it is, and what is known of its value.
  bool IsTableType() const { return InState(field_state::kTable); }
  bool IsNonSQLType() const { return InState(field_state::kNotFromData); }
  bool IsSysType() const { return InState(field_state::kSystem); }
  bool IsUserType() const { return InState(field_state::kUser); }       ///< the user supplies the value
  bool IsParaType() const { return InState(field_state::kParagraph); }  ///< an optional paragraph
  bool IsLocalType() const { return InState(field_state::kLocal); }
  bool IsTableRowType() const { return InState(field_state::kTableRow); }
  bool IsTableColumnType() const { return InState(field_state::kTableColumn); }
  bool IsValueIsNull() const { return InState(field_state::kValueIsNull); }
  bool IsCanDisplay() const { return InState(field_state::kCanDisplay); }  ///< may be shown to the user
  bool IsEditable() const { return InState(field_state::kEditable); }
  bool IsAddrRelated() const { return InState(field_state::kAddressRelated); }
  bool IsMultiColumns() const { return InState(field_state::kMultiColumns); }
  bool IsInput() const { return InState(field_state::kInput); }  ///< an input of the letter
  bool IsIndirectRef() const { return InState(field_state::kIndirect); }
  bool IsVolatile() const { return InState(field_state::kVolatile); }
  bool HasFunction() const { return InState(field_state::kHasFunction); }
  bool IsEof() const { return InState(field_state::kEof); }  ///< the field's query found no row
  bool IsNull() const { return InState(field_state::kNull); }
  bool IsDefaultUsed() const { return InState(field_state::kDefaultUsed); }
  bool IsUserUnSelected() const {
    return InState(field_state::kUnselected);
  }  ///< the user left this paragraph out

  /// The one flag that this system sets. Counts as a change even where the bit was so already.
  void SetIsUserUnSelected(bool bSet);

  bool IsTreatIndRefOptional() const { return InState(field_state::kReferenceOptional); }
  bool HasErr() const { return InState(field_state::kHasError); }          ///< the field itself is in error
  bool ErrInChild() const { return InState(field_state::kErrorInChild); }  ///< a descendant is in error
  bool ErrInNonAddrChild() const {
    return InState(field_state::kErrorInNonAddressChild);
  }  ///< one that is no address field

  // What is wrong with the field itself.
  bool ErrPopulateValue() const { return InErr(field_error::kPopulateValue); }
  bool ErrExecuteFunction() const { return InErr(field_error::kExecuteFunction); }
  bool ErrExecuteSQL() const { return InErr(field_error::kExecuteQuery); }
  bool ErrEofWhenMustExistReq() const { return InErr(field_error::kNoRow); }
  bool ErrNullWhenNotNullReq() const { return InErr(field_error::kNull); }
  bool ErrEmptyWhenNotEmptyReq() const { return InErr(field_error::kEmpty); }
  bool ErrZeroWhenNonZeroReq() const { return InErr(field_error::kZero); }
  bool ErrInputFldFailedtoValidate() const { return InErr(field_error::kInvalidInput); }  // spelt as given
  bool ErrAddressError() const { return InErr(field_error::kAddress); }
  bool ErrLtrGenerationIgnored() const { return InErr(field_error::kLetterIgnored); }

  // What the letter needs of an address, and how the customer's mailing and residential ("Resi") ones are.
  bool IsNonPOBoxReqd() const { return InAddrState(field_address::kPostOfficeBoxExcluded); }
  bool IsInStateReqd() const { return InAddrState(field_address::kInStateRequired); }
  bool IsOutStateReqd() const { return InAddrState(field_address::kOutOfStateRequired); }
  bool IsMailPreferred() const { return InAddrState(field_address::kMailPreferred); }
  bool IsResiPreferred() const { return InAddrState(field_address::kResidentialPreferred); }
  bool IsMailUsed() const { return InAddrState(field_address::kMailUsed); }
  bool IsResiUsed() const { return InAddrState(field_address::kResidentialUsed); }
  bool IsInStateCustomer() const { return InAddrState(field_address::kInStateCustomer); }
  bool IsMailMissing() const { return InAddrState(field_address::kMailMissing); }
  bool IsResiMissing() const { return InAddrState(field_address::kResidentialMissing); }
  bool IsMailFailFinalist() const {
    return InAddrState(field_address::kMailFailedVerification);
  }  ///< failed postal verification
  bool IsResiFailFinalist() const { return InAddrState(field_address::kResidentialFailedVerification); }
  bool IsMailHasPOBox() const { return InAddrState(field_address::kMailHasPostOfficeBox); }
  bool IsResiHasPOBox() const { return InAddrState(field_address::kResidentialHasPostOfficeBox); }
  bool IsMailMarkedBad() const { return InAddrState(field_address::kMailMarkedBad); }
  bool IsResiMarkedBad() const { return InAddrState(field_address::kResidentialMarkedBad); }
  bool IsMailStateNotAsReqd() const { return InAddrState(field_address::kMailStateNotAsRequired); }
  bool IsResiStateNotAsReqd() const { return InAddrState(field_address::kResidentialStateNotAsRequired); }
  bool IsProcessingErr() const { return InAddrState(field_address::kProcessingError); }
  bool IsAddressDbErr() const { return InAddrState(field_address::kDatabaseError); }
  bool IsFinalistErr() const { return InAddrState(field_address::kVerificationError); }
  bool IsFinalistUnkStatusErr() const { return InAddrState(field_address::kUnknownVerification); }
  bool IsNoUsableAddress() const { return InAddrState(field_address::kNoUsableAddress); }

  // The bits of a group that are set; 0 when none is.
  std::int32_t GetTypesMask() const { return Masked(state_, field_state::kTypes); }
  std::int32_t GetAttrMask() const { return Masked(state_, field_state::kAttributes); }
  std::int32_t GetFldConstMask() const {
    return Masked(state_, field_state::kTypes | field_state::kAttributes);
  }
  /// Without IsNull and IsTreatIndRefOptional.
  std::int32_t GetStatesMask() const { return Masked(state_, field_state::kStates); }
  std::int32_t GetMetaErrorsMask() const { return Masked(state_, field_state::kSummaries); }
  std::int32_t GetEmptyValuesAllowedTypesMask() const {
    return Masked(state_, field_state::kTypesThatMayBeEmpty);
  }

  bool CanHaveEmptyValue() const { return GetEmptyValuesAllowedTypesMask() != 0; }
  bool IsSelfErroneous() const { return HasErr(); }
  bool IsErroneous() const { return GetMetaErrorsMask() != 0; }  ///< the field or a descendant is in error
  std::int32_t GetErrorsMask() const { return Masked(err_, ~Word{0}); }
  /// That the letter was not made is all that is wrong.
  bool IsLtrGenIgnored() const { return GetErrorsMask() == field_error::kLetterIgnored; }

  std::int32_t GetAddrInputsMask() const { return Masked(addr_state_, field_address::kRequirements); }
  std::int32_t GetAddrNonInputsMask() const { return Masked(addr_state_, ~field_address::kRequirements); }
  std::int32_t GetAddrAttrMask() const { return Masked(addr_state_, field_address::kAttributes); }
  std::int32_t GetMailWarnsMask() const { return Masked(addr_state_, field_address::kMailWarnings); }
  std::int32_t GetResiWarnsMask() const { return Masked(addr_state_, field_address::kResidentialWarnings); }
  std::int32_t GetAddrWarnsMask() const { return Masked(addr_state_, field_address::kAllWarnings); }
  std::int32_t GetAddrErrorsMask() const { return Masked(addr_state_, field_address::kErrors); }
  std::int32_t GetAddrWarnsAndErrorsMask() const {
    return Masked(addr_state_, field_address::kAllWarnings | field_address::kErrors);
  }

  bool IsAddrErroneous() const { return GetAddrErrorsMask() != 0; }
  bool HasMailWarn() const { return GetMailWarnsMask() != 0; }
  bool HasResiWarn() const { return GetResiWarnsMask() != 0; }
  bool IsMailGood() const { return !HasMailWarn(); }
  bool IsResiGood() const { return !HasResiWarn(); }

 private:
  using Word = platform::FlagWord;

  static constexpr std::int32_t Masked(Word word, Word mask) {
    return static_cast<std::int32_t>(word & mask);
  }
  bool InState(Word bit) const { return (state_ & bit) != 0; }
  bool InErr(Word bit) const { return (err_ & bit) != 0; }
  bool InAddrState(Word bit) const { return (addr_state_ & bit) != 0; }

  Word state_ = 0;
  Word err_ = 0;
  Word addr_state_ = 0;
  bool changed_ = false;  // state_ was changed here and is not yet in the element
};

}  // namespace composition
