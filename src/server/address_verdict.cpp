#include "server/address_verdict.h"

#include "server/letter_text.h"

namespace server {
namespace {

/// The warnings of one address, as the mailing address's bits.
FlagWord Warnings(const Address& mail_or_residential) {
  FlagWord warnings = 0;
  if (mail_or_residential.IsMissing()) warnings |= address::kMailMissing;
  if (mail_or_residential.failed_verification) warnings |= address::kMailFailedVerification;
  if (mail_or_residential.IsPostOfficeBox()) warnings |= address::kMailHasPostOfficeBox;
  if (mail_or_residential.marked_bad) warnings |= address::kMailMarkedBad;
  return warnings;
}

std::string Lines(const Address& stored) {
  std::string lines;
  for (const auto* line : {&stored.line_1, &stored.line_2}) {
    if (!line->empty()) lines += *line + "\n";
  }
  return lines + CityLine(stored.city, stored.state, stored.zip);
}

}  // namespace

AddressVerdict JudgeAddresses(const Customer& customer, const std::string& home_state) {
  using Use = AddressVerdict::Use;
  AddressVerdict verdict;
  verdict.flags = Warnings(customer.mail) | (Warnings(customer.residential) << address::kResidentialShift);
  verdict.use = customer.mail.IsUsable()          ? Use::kMail
                : customer.residential.IsUsable() ? Use::kResidential
                                                  : Use::kNone;
  if (verdict.use == Use::kNone) {
    verdict.flags |= address::kNoUsableAddress;
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

}  // namespace server
