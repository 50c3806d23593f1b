#include "server/subject/address_verdict.h"

#include <gmock/gmock.h>

namespace {

using server::Address;
using server::Customer;
using server::FieldRules;
using server::FlagWord;
using Use = server::AddressVerdict::Use;
namespace address = server::address;
namespace rule = server::rule;

/// What is stored of an address, in a word; all else about it is as it should be.
Address StoredAs(const std::string& what) {
  Address stored{.line_1 = "1 Depot St",
                 .line_2 = "",
                 .city = "Hartsfield",
                 .state = "KV",
                 .zip = "88312",
                 .verification = "V"};
  if (what == "missing") return {.line_1 = "", .line_2 = "", .city = "", .state = "", .zip = ""};
  if (what == "box") stored.line_1 = "P.O. Box 7";
  if (what == "box abroad") stored.line_1 = "PO BOX 7";
  if (what.ends_with("abroad")) stored.state = "OK";
  if (what == "bad") stored.marked_bad = true;
  if (what.size() == 1) stored.verification = what;
  return stored;
}

Customer CustomerAt(const std::string& mail, const std::string& residential) {
  Customer customer;
  customer.mail = StoredAs(mail);
  customer.residential = StoredAs(residential);
  return customer;
}

struct AddressCase {
  const char* mail;
  const char* residential;
  FieldRules rules;
  Use use;
  FlagWord flags;
};

constexpr auto kNoAddress = address::kNoUsableAddress;
constexpr auto kMailHere = address::kMailUsed | address::kInStateCustomer;
constexpr auto kResidentialHere = address::kResidentialUsed | address::kInStateCustomer;

const AddressCase kAddressCases[] = {
    // The mailing address where it can be used, else the residential one.
    {"good", "good", 0, Use::kMail, kMailHere},
    {"good abroad", "good", 0, Use::kMail, address::kMailUsed},
    {"good", "missing", 0, Use::kMail, kMailHere | address::kResidentialMissing},
    {"missing", "good", 0, Use::kResidential, kResidentialHere | address::kMailMissing},
    {"bad", "good", 0, Use::kResidential, kResidentialHere | address::kMailMarkedBad},
    {"F", "good", 0, Use::kResidential, kResidentialHere | address::kMailFailedVerification},
    {"F", "bad", 0, Use::kNone,
     kNoAddress | address::kMailFailedVerification | address::kResidentialMarkedBad},
    {"missing", "missing", 0, Use::kNone, kNoAddress | address::kMailMissing | address::kResidentialMissing},
    // How the verification ended: what kept it from an answer is told only where no address is left.
    {"N", "missing", 0, Use::kMail, kMailHere | address::kResidentialMissing},
    {"P", "good", 0, Use::kResidential, kResidentialHere},
    {"P", "D", 0, Use::kNone, kNoAddress | address::kProcessingError | address::kDatabaseError},
    {"S", "?", 0, Use::kNone, kNoAddress | address::kVerificationError | address::kUnknownVerification},
    // What the letter asks of its address.
    {"box", "good", 0, Use::kMail, kMailHere | address::kMailHasPostOfficeBox},
    {"box", "good", rule::kNoPostOfficeBox, Use::kResidential,
     kResidentialHere | address::kMailHasPostOfficeBox | address::kPostOfficeBoxExcluded},
    {"box", "box abroad", rule::kNoPostOfficeBox, Use::kNone,
     kNoAddress | address::kMailHasPostOfficeBox | address::kResidentialHasPostOfficeBox |
         address::kPostOfficeBoxExcluded},
    {"good abroad", "good", rule::kInState, Use::kResidential,
     kResidentialHere | address::kMailStateNotAsRequired | address::kInStateRequired},
    {"good", "good abroad", rule::kOutOfState, Use::kResidential,
     address::kResidentialUsed | address::kMailStateNotAsRequired | address::kOutOfStateRequired},
    {"good", "good", rule::kOutOfState, Use::kNone,
     kNoAddress | address::kMailStateNotAsRequired | address::kResidentialStateNotAsRequired |
         address::kOutOfStateRequired},
    {"good", "good", rule::kPreferResidential, Use::kResidential,
     kResidentialHere | address::kResidentialPreferred},
    {"good", "bad", rule::kPreferResidential, Use::kMail,
     kMailHere | address::kResidentialMarkedBad | address::kResidentialPreferred},
    {"good", "good", rule::kPreferMail, Use::kMail, kMailHere | address::kMailPreferred},
};

TEST(AddressVerdict, IsTheFirstAddressThatCanBeUsedAndSaysWhatIsWrongWithBoth) {
  for (const auto& [mail, residential, rules, use, flags] : kAddressCases) {
    SCOPED_TRACE(std::string(mail) + " and " + residential + ", rules " + std::to_string(rules));
    const auto verdict = server::JudgeAddresses(CustomerAt(mail, residential), "KV", rules);
    EXPECT_EQ(verdict.use, use);
    EXPECT_EQ(verdict.flags, flags) << server::ExplainAddress(verdict.flags) << " instead of "
                                    << server::ExplainAddress(flags);
  }
}

TEST(AddressVerdict, RefusesForWhatIsStoredAndNotForAVerificationWithoutAnAnswer) {
  const std::pair<const char*, bool> cases[] = {{"bad", true}, {"F", true}, {"P", false}, {"good", false}};
  for (const auto& [both, is_refused] : cases) {
    const auto verdict = server::JudgeAddresses(CustomerAt(both, both), "KV");
    EXPECT_EQ(verdict.IsRefused(), is_refused) << both;
  }
}

TEST(AddressVerdict, GivesTheLinesOfTheUsedAddressElseOfOneThatIsStored) {
  auto customer = CustomerAt("bad", "good");
  customer.mail.line_1 = "Box 1";
  customer.residential.line_2 = "Suite 4";
  const auto lines = [&] { return server::AddressLines(customer, server::JudgeAddresses(customer, "KV")); };
  EXPECT_EQ(lines(), "1 Depot St\nSuite 4\nHartsfield, KV 88312");
  customer.residential = StoredAs("missing");
  EXPECT_EQ(lines(), "Box 1\nHartsfield, KV 88312");
  customer.mail = StoredAs("missing");
  EXPECT_EQ(lines(), "");
}

}  // namespace
