#pragma once

#include <string>

#include "server/subject/letter_subject.h"
#include "server/wire/field_flags.h"

namespace server {

/// Where a customer's letter goes: to the mailing address where it can be used, else to the residential one,
/// or the other way round where the letter prefers that.
struct AddressVerdict {
  enum class Use { kNone, kMail, kResidential };
  Use use = Use::kNone;
  FlagWord flags = 0;  ///< the word "AddrState": what is used, and what is wrong with either address

  /// ADDR_TYP_CD of the letter; null where there is none.
  platform::Value AddressType() const;
  bool IsUsable() const { return use != Use::kNone; }
  /// There is no usable address because of what is stored, not because it could not be verified.
  bool IsRefused() const { return !IsUsable() && (flags & address::kAllWarnings) != 0; }
};

/// `home_state`: the state whose letters these are; `rules`: what the letter asks of its address.
///
/// An address can be used when it is complete, not marked bad, verified, and as the letter asks for. Where
/// none can, "no usable address" is an error, with what kept the verification from an answer beside it.
AddressVerdict JudgeAddresses(const Customer& customer, const std::string& home_state, FieldRules rules = 0);

/// The lines for the envelope, separated by line feeds, the city line last: of the address that is used, or,
/// where none is, of what is stored. "" where nothing is stored.
std::string AddressLines(const Customer& customer, const AddressVerdict& verdict);

}  // namespace server
