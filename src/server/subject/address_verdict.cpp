#include "server/subject/address_verdict.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/agreed/letter_record.h"
#include "server/subject/letter_text.h"

namespace server {
namespace {

struct Verification {
  std::string_view code;
  FlagWord warning;  ///< as the mailing address's bit
  FlagWord error;
};

// How the postal verification of an address ended. Any other code is an error of its own.
constexpr auto kVerifications = std::to_array<Verification>({
    {"V", 0, 0},                                 // verified
    {"N", 0, 0},                                 // not asked for
    {"F", address::kMailFailedVerification, 0},  // no such address
    {"P", 0, address::kProcessingError},         // broke off
    {"D", 0, address::kDatabaseError},           // its address database could not be read
    {"S", 0, address::kVerificationError},       // the service did not answer
});

struct Requirement {
  FieldRules rule;
  FlagWord flag;
};

constexpr auto kRequirements = std::to_array<Requirement>({
    {rule::kNoPostOfficeBox, address::kPostOfficeBoxExcluded},
    {rule::kInState, address::kInStateRequired},
    {rule::kOutOfState, address::kOutOfStateRequired},
    {rule::kPreferMail, address::kMailPreferred},
    {rule::kPreferResidential, address::kResidentialPreferred},
});

FlagWord Requirements(FieldRules rules) {
  FlagWord flags = 0;
  for (const auto& requirement : kRequirements) {
    if ((rules & requirement.rule) != 0) flags |= requirement.flag;
  }
  return flags;
}

/// What is wrong with one address; the warnings as the mailing address's bits.
struct Findings {
  FlagWord warnings = 0;
  FlagWord errors = 0;
  bool usable = false;
};

void Verify(const Address& stored, Findings& findings) {
  const auto known = std::ranges::find(kVerifications, stored.verification, &Verification::code);
  if (known == kVerifications.end()) {
    findings.errors |= address::kUnknownVerification;
  } else {
    findings.warnings |= known->warning;
    findings.errors |= known->error;
  }
}

Findings Examine(const Address& stored, const std::string& home_state, FieldRules rules) {
  Findings findings;
  if (stored.marked_bad) findings.warnings |= address::kMailMarkedBad;
  if (stored.IsMissing()) {
    findings.warnings |= address::kMailMissing;
    if (stored.verification == "F") findings.warnings |= address::kMailFailedVerification;
    return findings;
  }
  Verify(stored, findings);
  const auto wrong_state = stored.state == home_state ? rule::kOutOfState : rule::kInState;
  if ((rules & wrong_state) != 0) findings.warnings |= address::kMailStateNotAsRequired;
  findings.usable = findings.warnings == 0 && findings.errors == 0;
  if (!stored.IsPostOfficeBox()) return findings;
  findings.warnings |= address::kMailHasPostOfficeBox;
  if ((rules & rule::kNoPostOfficeBox) != 0) findings.usable = false;
  return findings;
}

std::string Lines(const Address& stored) {
  std::string lines;
  for (const auto* line : {&stored.line_1, &stored.line_2}) {
    if (!line->empty()) lines += *line + "\n";
  }
  return lines + CityLine(stored.city, stored.state, stored.zip);
}

}  // namespace

AddressVerdict JudgeAddresses(const Customer& customer, const std::string& home_state, FieldRules rules) {
  using Use = AddressVerdict::Use;
  const auto mail = Examine(customer.mail, home_state, rules);
  const auto residential = Examine(customer.residential, home_state, rules);
  AddressVerdict verdict;
  verdict.flags = Requirements(rules) | mail.warnings | (residential.warnings << address::kResidentialShift);
  const bool residential_first = (rules & rule::kPreferResidential) != 0;
  if (mail.usable && !(residential_first && residential.usable)) {
    verdict.use = Use::kMail;
  } else if (residential.usable) {
    verdict.use = Use::kResidential;
  } else {
    verdict.flags |= address::kNoUsableAddress | mail.errors | residential.errors;
    return verdict;
  }
  const auto& used = verdict.use == Use::kMail ? customer.mail : customer.residential;
  verdict.flags |= verdict.use == Use::kMail ? address::kMailUsed : address::kResidentialUsed;
  if (used.state == home_state) verdict.flags |= address::kInStateCustomer;
  return verdict;
}

std::string AddressLines(const Customer& customer, const AddressVerdict& verdict) {
  if (verdict.use == AddressVerdict::Use::kResidential) return Lines(customer.residential);
  if (!customer.mail.IsMissing()) return Lines(customer.mail);
  return customer.residential.IsMissing() ? "" : Lines(customer.residential);
}

platform::Value AddressVerdict::AddressType() const {
  switch (use) {
    case Use::kMail:
      return platform::letter_address::kMailing;
    case Use::kResidential:
      return platform::letter_address::kResidential;
    case Use::kNone:
      break;
  }
  return {};
}

}  // namespace server
