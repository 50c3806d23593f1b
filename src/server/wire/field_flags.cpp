#include "server/wire/field_flags.h"

#include <array>
#include <span>
#include <string_view>

namespace server {
namespace {

struct Meaning {
  FlagWord bit;
  std::string_view words;
};

constexpr auto kTypes = std::to_array<Meaning>({
    {state::kTable, "table"},
    {state::kNotFromData, "made by the server"},
    {state::kSystem, "supplied by the system"},
    {state::kUser, "entered by the user"},
    {state::kParagraph, "optional paragraph"},
    {state::kLocal, "set by the letter's definition"},
    {state::kTableRow, "table row"},
    {state::kTableColumn, "table column"},
});

constexpr auto kAttributes = std::to_array<Meaning>({
    {state::kValueIsNull, "has no value"},
    {state::kCanDisplay, "may be shown"},
    {state::kEditable, "may be changed"},
    {state::kAddressRelated, "part of the address"},
    {state::kMultiColumns, "put together from several columns"},
});

constexpr auto kStates = std::to_array<Meaning>({
    {state::kInput, "input of the letter"},
    {state::kIndirect, "other fields are made from it"},
    {state::kVolatile, "changes from day to day"},
    {state::kHasFunction, "computed from other fields"},
    {state::kEof, "nothing was found in the data"},
    {state::kNull, "empty in the data"},
    {state::kDefaultUsed, "the default of the letter is used"},
    {state::kUnselected, "left out by the user"},
    {state::kReferenceOptional, "the fields it is made from may be missing"},
});

constexpr auto kSummaries = std::to_array<Meaning>({
    {state::kErrorInChild, "a field below it is in error"},
});

constexpr auto kErrors = std::to_array<Meaning>({
    {error::kPopulateValue, "the value cannot be made from what the data hold"},
    {error::kExecuteFunction, "the function failed"},
    {error::kExecuteQuery, "the query failed"},
    {error::kNoRow, "nothing was found, but the letter needs it"},
    {error::kNull, "the letter needs a value, and the data have none"},
    {error::kEmpty, "the letter needs a value, and it is empty"},
    {error::kZero, "the letter needs an amount, and it is zero"},
    {error::kInvalidInput, "the input is not one that this letter can be written for"},
    {error::kLetterIgnored, "there is nothing to write this letter about"},
    {error::kAddress, "the customer has no address that the letter could go to"},
});

constexpr auto kAddressMeanings = std::to_array<Meaning>({
    {address::kNoUsableAddress, "no usable address"},
    {address::kProcessingError, "an address could not be processed"},
    {address::kDatabaseError, "the address database could not be read"},
    {address::kVerificationError, "the address verification did not answer"},
    {address::kUnknownVerification, "the address verification answered with an unknown status"},
    {address::kPostOfficeBoxExcluded, "the letter must not go to a post office box"},
    {address::kInStateRequired, "the letter stays in this state"},
    {address::kOutOfStateRequired, "the letter goes to another state"},
    {address::kMailPreferred, "the mailing address is preferred"},
    {address::kResidentialPreferred, "the residential address is preferred"},
    {address::kMailUsed, "the letter goes to the mailing address"},
    {address::kResidentialUsed, "the letter goes to the residential address"},
    {address::kInStateCustomer, "customer of this state"},
    {address::kMailMissing, "mailing address is missing"},
    {address::kMailFailedVerification, "mailing address failed verification"},
    {address::kMailHasPostOfficeBox, "mailing address is a post office box"},
    {address::kMailMarkedBad, "mailing address is marked bad"},
    {address::kMailStateNotAsRequired, "mailing address is not in the state that the letter asks for"},
    {address::kResidentialMissing, "residential address is missing"},
    {address::kResidentialFailedVerification, "residential address failed verification"},
    {address::kResidentialHasPostOfficeBox, "residential address is a post office box"},
    {address::kResidentialMarkedBad, "residential address is marked bad"},
    {address::kResidentialStateNotAsRequired,
     "residential address is not in the state that the letter asks for"},
});

void AddMeanings(std::string& list, FlagWord word, std::span<const Meaning> meanings) {
  for (const auto& meaning : meanings) {
    if ((word & meaning.bit) == 0) continue;
    if (!list.empty()) list += ", ";
    list += meaning.words;
  }
}

std::string Sentence(std::string list) {
  if (list.empty()) return list;
  if (list.front() >= 'a' && list.front() <= 'z') list.front() = static_cast<char>(list.front() - 'a' + 'A');
  return list + ".";
}

std::string Explain(FlagWord word, std::span<const Meaning> meanings) {
  std::string list;
  AddMeanings(list, word, meanings);
  return Sentence(list);
}

}  // namespace

std::string ExplainType(FlagWord state) {
  auto text = Explain(state, kTypes);
  return text.empty() ? "Read from the data." : text;
}

std::string ExplainAttributes(FlagWord state) {
  return Explain(state, kAttributes);
}

std::string ExplainState(FlagWord state) {
  return Explain(state, kStates);
}

std::string ExplainErrors(FlagWord state, FlagWord error) {
  std::string list;
  AddMeanings(list, error, kErrors);
  AddMeanings(list, state, kSummaries);
  return Sentence(list);
}

std::string ExplainAddress(FlagWord address) {
  return Explain(address, kAddressMeanings);
}

}  // namespace server
