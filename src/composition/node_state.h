#pragma once

#include <cstdint>

#include "platform/xml/xml.h"

namespace composition {

/// The flag words of one field of a letter's data context, and every question the system asks of them.
///
/// The server marks each field's element with up to three words: "State" (the field's type, attributes and
/// summary errors), "Err" (its own errors) and "AddrState" (what the letter needs of an address, and what is
/// wrong with the customer's). Nothing else knows which bit means what. One instance is used over and over,
/// initialised from one element after another.
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
  bool IsTableType() const { return InState(kTableType); }
  bool IsNonSQLType() const { return InState(kNonSqlType); }
  bool IsSysType() const { return InState(kSysType); }
  bool IsUserType() const { return InState(kUserType); }  ///< the user supplies the value
  bool IsParaType() const { return InState(kParaType); }  ///< an optional paragraph
  bool IsLocalType() const { return InState(kLocalType); }
  bool IsTableRowType() const { return InState(kTableRowType); }
  bool IsTableColumnType() const { return InState(kTableColumnType); }
  bool IsValueIsNull() const { return InState(kValueIsNull); }
  bool IsCanDisplay() const { return InState(kCanDisplay); }  ///< may be shown to the user
  bool IsEditable() const { return InState(kEditable); }
  bool IsAddrRelated() const { return InState(kAddrRelated); }
  bool IsMultiColumns() const { return InState(kMultiColumns); }
  bool IsInput() const { return InState(kInput); }  ///< an input of the letter
  bool IsIndirectRef() const { return InState(kIndirectRef); }
  bool IsVolatile() const { return InState(kVolatile); }
  bool HasFunction() const { return InState(kFunction); }
  bool IsEof() const { return InState(kEof); }  ///< the field's query found no row
  bool IsNull() const { return InState(kNull); }
  bool IsDefaultUsed() const { return InState(kDefaultUsed); }
  bool IsUserUnSelected() const { return InState(kUserUnSelected); }  ///< the user left this paragraph out

  /// The one flag that this system sets. Counts as a change even where the bit was so already.
  void SetIsUserUnSelected(bool bSet);

  bool IsTreatIndRefOptional() const { return InState(kTreatIndRefOptional); }
  bool HasErr() const { return InState(kErr); }                           ///< the field itself is in error
  bool ErrInChild() const { return InState(kErrInChild); }                ///< a descendant is in error
  bool ErrInNonAddrChild() const { return InState(kErrInNonAddrChild); }  ///< one that is no address field

  // What is wrong with the field itself.
  bool ErrPopulateValue() const { return InErr(kPopulateValue); }
  bool ErrExecuteFunction() const { return InErr(kExecuteFunction); }
  bool ErrExecuteSQL() const { return InErr(kExecuteSql); }
  bool ErrEofWhenMustExistReq() const { return InErr(kEofWhenMustExistReq); }
  bool ErrNullWhenNotNullReq() const { return InErr(kNullWhenNotNullReq); }
  bool ErrEmptyWhenNotEmptyReq() const { return InErr(kEmptyWhenNotEmptyReq); }
  bool ErrZeroWhenNonZeroReq() const { return InErr(kZeroWhenNonZeroReq); }
  bool ErrInputFldFailedtoValidate() const { return InErr(kInputFldFailedToValidate); }
  bool ErrAddressError() const { return InErr(kAddressError); }
  bool ErrLtrGenerationIgnored() const { return InErr(kLtrGenerationIgnored); }

  // What the letter needs of an address, and how the customer's mailing and residential ("Resi") ones are.
  bool IsNonPOBoxReqd() const { return InAddrState(kNonPoBoxReqd); }
  bool IsInStateReqd() const { return InAddrState(kInStateReqd); }
  bool IsOutStateReqd() const { return InAddrState(kOutStateReqd); }
  bool IsMailPreferred() const { return InAddrState(kMailPreferred); }
  bool IsResiPreferred() const { return InAddrState(kResiPreferred); }
  bool IsMailUsed() const { return InAddrState(kMailUsed); }
  bool IsResiUsed() const { return InAddrState(kResiUsed); }
  bool IsInStateCustomer() const { return InAddrState(kInStateCustomer); }
  bool IsMailMissing() const { return InAddrState(kMailMissing); }
  bool IsResiMissing() const { return InAddrState(kResiMissing); }
  bool IsMailFailFinalist() const { return InAddrState(kMailFailFinalist); }  ///< failed postal verification
  bool IsResiFailFinalist() const { return InAddrState(kResiFailFinalist); }
  bool IsMailHasPOBox() const { return InAddrState(kMailHasPoBox); }
  bool IsResiHasPOBox() const { return InAddrState(kResiHasPoBox); }
  bool IsMailMarkedBad() const { return InAddrState(kMailMarkedBad); }
  bool IsResiMarkedBad() const { return InAddrState(kResiMarkedBad); }
  bool IsMailStateNotAsReqd() const { return InAddrState(kMailStateNotAsReqd); }
  bool IsResiStateNotAsReqd() const { return InAddrState(kResiStateNotAsReqd); }
  bool IsProcessingErr() const { return InAddrState(kProcessingErr); }
  bool IsAddressDbErr() const { return InAddrState(kAddressDbErr); }
  bool IsFinalistErr() const { return InAddrState(kFinalistErr); }
  bool IsFinalistUnkStatusErr() const { return InAddrState(kFinalistUnkStatusErr); }
  bool IsNoUsableAddress() const { return InAddrState(kNoUsableAddress); }

  // The bits of a group that are set; 0 when none is.
  std::int32_t GetTypesMask() const { return Masked(state_, kTypes); }
  std::int32_t GetAttrMask() const { return Masked(state_, kAttributes); }
  std::int32_t GetFldConstMask() const { return Masked(state_, kTypes | kAttributes); }
  /// Without kNull and kTreatIndRefOptional.
  std::int32_t GetStatesMask() const { return Masked(state_, kStates); }
  std::int32_t GetMetaErrorsMask() const { return Masked(state_, kMetaErrors); }
  std::int32_t GetEmptyValuesAllowedTypesMask() const { return Masked(state_, kEmptyValuesAllowedTypes); }

  bool CanHaveEmptyValue() const { return GetEmptyValuesAllowedTypesMask() != 0; }
  bool IsSelfErroneous() const { return HasErr(); }
  bool IsErroneous() const { return GetMetaErrorsMask() != 0; }  ///< the field or a descendant is in error
  std::int32_t GetErrorsMask() const { return Masked(err_, kWholeWord); }
  /// That the letter was not made is all that is wrong.
  bool IsLtrGenIgnored() const { return GetErrorsMask() == kLtrGenerationIgnored; }

  std::int32_t GetAddrInputsMask() const { return Masked(addr_state_, kAddrInputs); }
  std::int32_t GetAddrNonInputsMask() const { return Masked(addr_state_, ~kAddrInputs); }
  std::int32_t GetAddrAttrMask() const { return Masked(addr_state_, kAddrAttributes); }
  std::int32_t GetMailWarnsMask() const { return Masked(addr_state_, kMailWarns); }
  std::int32_t GetResiWarnsMask() const { return Masked(addr_state_, kResiWarns); }
  std::int32_t GetAddrWarnsMask() const { return Masked(addr_state_, kMailWarns | kResiWarns); }
  std::int32_t GetAddrErrorsMask() const { return Masked(addr_state_, kAddrErrors); }
  std::int32_t GetAddrWarnsAndErrorsMask() const {
    return Masked(addr_state_, kMailWarns | kResiWarns | kAddrErrors);
  }

  bool IsAddrErroneous() const { return GetAddrErrorsMask() != 0; }
  bool HasMailWarn() const { return GetMailWarnsMask() != 0; }
  bool HasResiWarn() const { return GetResiWarnsMask() != 0; }
  bool IsMailGood() const { return !HasMailWarn(); }
  bool IsResiGood() const { return !HasResiWarn(); }

 private:
  using Word = std::uint32_t;

  // State.
  static constexpr Word kTableType = 0x1;
  static constexpr Word kNonSqlType = 0x2;
  static constexpr Word kSysType = 0x4;
  static constexpr Word kUserType = 0x8;
  static constexpr Word kParaType = 0x10;
  static constexpr Word kLocalType = 0x20;
  static constexpr Word kTableRowType = 0x40;
  static constexpr Word kTableColumnType = 0x80;
  static constexpr Word kValueIsNull = 0x100;
  static constexpr Word kCanDisplay = 0x200;
  static constexpr Word kEditable = 0x400;
  static constexpr Word kInput = 0x800;
  static constexpr Word kIndirectRef = 0x1000;
  static constexpr Word kVolatile = 0x2000;
  static constexpr Word kFunction = 0x4000;
  static constexpr Word kEof = 0x8000;
  static constexpr Word kNull = 0x1'0000;
  static constexpr Word kDefaultUsed = 0x2'0000;
  static constexpr Word kUserUnSelected = 0x4'0000;
  static constexpr Word kTreatIndRefOptional = 0x8'0000;
  static constexpr Word kAddrRelated = 0x10'0000;
  static constexpr Word kMultiColumns = 0x20'0000;
  static constexpr Word kErr = 0x40'0000;
  static constexpr Word kErrInChild = 0x80'0000;
  static constexpr Word kErrInNonAddrChild = 0x100'0000;

  static constexpr Word kTypes = kTableType | kNonSqlType | kSysType | kUserType | kParaType | kLocalType |
                                 kTableRowType | kTableColumnType;
  static constexpr Word kAttributes = kValueIsNull | kCanDisplay | kEditable | kAddrRelated | kMultiColumns;
  static constexpr Word kStates =
      kInput | kIndirectRef | kVolatile | kFunction | kEof | kDefaultUsed | kUserUnSelected;
  static constexpr Word kMetaErrors = kErr | kErrInChild | kErrInNonAddrChild;
  static constexpr Word kEmptyValuesAllowedTypes = kTableType | kUserType | kParaType | kTableRowType;

  // Err.
  static constexpr Word kPopulateValue = 0x1;
  static constexpr Word kExecuteFunction = 0x2;
  static constexpr Word kExecuteSql = 0x4;
  static constexpr Word kEofWhenMustExistReq = 0x8;
  static constexpr Word kNullWhenNotNullReq = 0x10;
  static constexpr Word kEmptyWhenNotEmptyReq = 0x20;
  static constexpr Word kZeroWhenNonZeroReq = 0x40;
  static constexpr Word kInputFldFailedToValidate = 0x80;
  static constexpr Word kLtrGenerationIgnored = 0x100;
  static constexpr Word kAddressError = 0x200;

  static constexpr Word kWholeWord = 0xFFFF'FFFF;

  // AddrState. Mail and residential warnings alternate bit by bit.
  static constexpr Word kNonPoBoxReqd = 0x1;
  static constexpr Word kInStateReqd = 0x2;
  static constexpr Word kOutStateReqd = 0x4;
  static constexpr Word kMailPreferred = 0x8;
  static constexpr Word kResiPreferred = 0x10;
  static constexpr Word kMailUsed = 0x80;
  static constexpr Word kResiUsed = 0x100;
  static constexpr Word kInStateCustomer = 0x200;
  static constexpr Word kMailMissing = 0x800;
  static constexpr Word kResiMissing = 0x1000;
  static constexpr Word kMailFailFinalist = 0x2000;
  static constexpr Word kResiFailFinalist = 0x4000;
  static constexpr Word kMailHasPoBox = 0x8000;
  static constexpr Word kResiHasPoBox = 0x1'0000;
  static constexpr Word kMailMarkedBad = 0x2'0000;
  static constexpr Word kResiMarkedBad = 0x4'0000;
  static constexpr Word kMailStateNotAsReqd = 0x8'0000;
  static constexpr Word kResiStateNotAsReqd = 0x10'0000;
  static constexpr Word kProcessingErr = 0x200'0000;
  static constexpr Word kAddressDbErr = 0x400'0000;
  static constexpr Word kFinalistErr = 0x800'0000;
  static constexpr Word kFinalistUnkStatusErr = 0x1000'0000;
  static constexpr Word kNoUsableAddress = 0x2000'0000;

  static constexpr Word kAddrInputs =
      kNonPoBoxReqd | kInStateReqd | kOutStateReqd | kMailPreferred | kResiPreferred;
  static constexpr Word kAddrAttributes = kMailUsed | kResiUsed | kInStateCustomer;
  static constexpr Word kMailWarns =
      kMailMissing | kMailFailFinalist | kMailHasPoBox | kMailMarkedBad | kMailStateNotAsReqd;
  static constexpr Word kResiWarns =
      kResiMissing | kResiFailFinalist | kResiHasPoBox | kResiMarkedBad | kResiStateNotAsReqd;
  static constexpr Word kAddrErrors =
      kProcessingErr | kAddressDbErr | kFinalistErr | kFinalistUnkStatusErr | kNoUsableAddress;

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
