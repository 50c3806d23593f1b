#pragma once

#include <string>

#include "server/field_flags.h"
#include "server/letter_subject.h"

namespace server {

/// Where a customer's letter goes: to the mailing address where it can be used, else to the residential one.
struct AddressVerdict {
  enum class Use { kNone, kMail, kResidential };
  Use use = Use::kNone;
  FlagWord flags = 0;  ///< the word "AddrState": what is used, and what is wrong with either address

  bool IsUsable() const { return use != Use::kNone; }
};

/// `home_state`: the state whose letters these are.
AddressVerdict JudgeAddresses(const Customer& customer, const std::string& home_state);

/// The lines for the envelope, separated by line feeds, the city line last: of the address that is used, or,
/// where none is, of what is stored. "" where nothing is stored.
std::string AddressLines(const Customer& customer, const AddressVerdict& verdict);

}  // namespace server
