#include "server/customers/customer_save.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "platform/agreed/record_layouts.h"
#include "platform/agreed/requests.h"
#include "platform/agreed/rights.h"
#include "platform/failure.h"
#include "platform/text.h"
#include "server/customers/customer_changes.h"
#include "server/customers/customer_words.h"
#include "server/customers/new_customer.h"
#include "server/customers/return_mail.h"
#include "server/history/rescheduling.h"

namespace server {
namespace {

using platform::AddressVerdict;
using platform::Failure;
using platform::RecordSet;

namespace record_name = platform::record_name;
namespace request_key = platform::request_key;

constexpr std::string_view kAdd = "ADD";
constexpr std::string_view kUpdate = "UPD";
constexpr std::string_view kWithVerification = "F";
constexpr std::string_view kIndividual = "0";
constexpr std::string_view kBusiness = "1";

// How a verification ended, as it is stored.
constexpr const char* kVerified = "V";
constexpr const char* kFailed = "F";

constexpr std::size_t kZipLength = 5;  // without its plus-four

struct AddressPlace {
  std::string_view prefix;
  int failed;  ///< its part of FINALIST_IND
};
constexpr auto kAddressPlaces = std::to_array<AddressPlace>({{kMailPrefix, 1}, {kResidentialPrefix, 2}});

std::string Column(std::string_view prefix, std::string_view name) {
  return std::string(prefix) + std::string(name);
}

/// What a request asks for, held against what is stored.
struct Plan {
  bool adds = false;
  bool must_pass = false;  ///< all changed addresses, or nothing is stored
  std::string customer;    ///< "" for a new one
  std::int64_t version = 0;
  CustomerValues before;
  CustomerValues given;  ///< what the record brings
  CustomerValues after;

  bool IsChanged(std::string_view prefix) const {
    return !(AddressOf(before, prefix) == AddressOf(after, prefix));
  }
};

std::string TextOf(const RecordSet& rows, std::string_view column) {
  return rows.HasColumn(column) ? std::string(platform::Trim(rows.Text(column))) : "";
}

/// The action without its "F"; sets what the "F" says.
std::string ReadAction(const RecordSet& rows, Plan& plan) {
  auto action = platform::UpperCase(TextOf(rows, "ACTION"));
  const auto asked = TextOf(rows, "FINALIST_IND");
  plan.must_pass = action.ends_with(kWithVerification) || (!asked.empty() && asked != "0");
  if (action.ends_with(kWithVerification)) action.pop_back();
  if (action == kAdd || action == kUpdate) return action;
  throw Failure(Failure::Kind::kRefused,
                "The server does not know the action " + platform::Quoted(TextOf(rows, "ACTION")) +
                    " for a customer; send \"ADD\" or \"UPD\", with \"F\" behind it to verify.");
}

void RequireRight(const Exchange& exchange, bool adds) {
  const std::string right = adds ? platform::right::kAddCustomer : platform::right::kEditCustomer;
  if (exchange.rights.Holds(exchange.request.user_id, right)) return;
  throw Failure(Failure::Kind::kPermissionDenied,
                "The user " + platform::Quoted(exchange.request.user_id) + " may not " +
                    (adds ? "add" : "change") + " customers, and nothing was saved. The right " +
                    platform::Quoted(right) + " is given in \"server.ini\".");
}

/// The change is made from what is stored, not from what was before somebody else's change.
void RequireVersion(Exchange& exchange, const Plan& plan) {
  const auto version = exchange.keys.Number(request_key::kCustomerVersion);
  if (version == plan.version) return;
  if (!version) {
    throw Failure(Failure::Kind::kRefused, "The change of the customer " + platform::Quoted(plan.customer) +
                                               " does not say which state it was made from (UPDT_NBR). "
                                               "Nothing was saved.");
  }
  const auto changes = ChangesSince(exchange.database, plan.customer, *version);
  throw Failure(Failure::Kind::kRefused,
                "The customer " + platform::Quoted(plan.customer) +
                    " has been changed since you opened it by " + changes +
                    ". Nothing of yours was saved; open the customer again and enter your change there.");
}

void ReadStored(Exchange& exchange, const RecordSet& rows, Plan& plan) {
  plan.customer = TextOf(rows, "CUST_ID");
  auto stored = FindCustomerValues(exchange.database, plan.customer);
  if (!stored) {
    throw Failure(Failure::Kind::kNotFound, "There is no customer " + platform::Quoted(plan.customer) +
                                                " any more. Nothing was saved.");
  }
  plan.before = std::move(*stored);
  plan.version = exchange.database.Select("SELECT UPDT_NBR FROM customer WHERE CUST_ID = ?", {plan.customer})
                     ->Get("UPDT_NBR")
                     .AsInteger();
  RequireVersion(exchange, plan);
}

/// Whether it is a person; as it is stored, where the record does not say.
bool ReadType(const RecordSet& rows, const Plan& plan) {
  const auto type = TextOf(rows, "CUST_TYP_CD");
  if (type.empty()) return IsIndividual(plan.adds ? plan.after : plan.before);
  if (type != kIndividual && type != kBusiness) {
    throw Failure(Failure::Kind::kRefused, "CUST_TYP_CD cannot be " + platform::Quoted(type) +
                                               ": it is \"0\" for a person, \"1\" for a business.");
  }
  const bool individual = type == kIndividual;
  if (plan.adds || individual == IsIndividual(plan.before)) return individual;
  throw Failure(Failure::Kind::kRefused,
                "CUST_TYP_CD cannot be " + platform::Quoted(type) +
                    ": a person does not become a business, nor the other way round. Nothing was saved.");
}

/// Where no states have been taken in, any two letters do.
void RequireState(Database& database, std::string_view column, const std::string& code) {
  const auto missing = database.Select(
      "SELECT ST_CD FROM state WHERE NOT EXISTS (SELECT 1 FROM state WHERE ST_CD = ?) LIMIT 1", {code});
  if (code.empty() || missing->IsEmpty()) return;
  throw Failure(Failure::Kind::kRefused, std::string(column) + " cannot be " + platform::Quoted(code) +
                                             ": there is no such state. Nothing was saved.");
}

Plan MakePlan(Exchange& exchange) {
  const auto& rows = *exchange.request.Rows(record_name::kCustomer);
  if (rows.RecordCount() != 1) {
    throw Failure(Failure::Kind::kRefused, "The record \"Customer\" came with " +
                                               std::to_string(rows.RecordCount()) + " rows; it has one.");
  }
  Plan plan;
  plan.adds = ReadAction(rows, plan) == kAdd;
  RequireRight(exchange, plan.adds);
  if (!plan.adds) ReadStored(exchange, rows, plan);
  plan.after = plan.before;
  plan.given = GivenCustomerValues(rows, plan.before);
  for (const auto& [column, value] : plan.given) plan.after[column] = value;
  for (const auto& place : kAddressPlaces) {
    const auto mark = Column(place.prefix, "RTND_IND");
    if (plan.adds) plan.after.try_emplace(mark, "N");
    plan.after.try_emplace(Column(place.prefix, "VRFY_CD"), kVerified);  // an address that is not there
  }
  if (plan.adds) plan.after.try_emplace("FUEL_TAX_IND", "Y");
  CheckCustomer(plan.before, plan.after, ReadType(rows, plan));
  for (const auto& place : kAddressPlaces) {
    const auto column = Column(place.prefix, "ST");
    if (plan.after[column] != plan.before[column])
      RequireState(exchange.database, column, plan.after[column]);
  }
  return plan;
}

bool NeedsVerification(const Plan& plan, std::string_view prefix) {
  return plan.IsChanged(prefix) && HasAddress(plan.after, prefix);
}

const AddressVerdict& VerdictOn(const Exchange& exchange, const platform::PostalAddress& address) {
  const auto found = std::ranges::find(exchange.verified, address, &VerifiedAddress::asked);
  if (found != exchange.verified.end()) return found->verdict;
  throw Failure(Failure::Kind::kUnavailable,
                "The customer was changed while the address was verified. Nothing was saved; try again.");
}

std::string CountyName(Database& database, const std::string& code) {
  const auto rows = database.Select("SELECT QZ_CNTY_DESC FROM county WHERE QZ_CNTY_NBR = ?", {code});
  return rows->IsEmpty() ? "" : rows->FirstText();
}

/// The county that the zip code says, by the longest beginning that fits, else the one that was sent.
std::string CountyOf(Database& database, const platform::PostalAddress& address, const std::string& sent) {
  const auto rows = database.Select(
      R"(SELECT QZ_CNTY_NBR FROM county WHERE ZIP_PRFX <> '' AND SUBSTR(?, 1, LENGTH(ZIP_PRFX)) = ZIP_PRFX
         ORDER BY LENGTH(ZIP_PRFX) DESC, QZ_CNTY_NBR LIMIT 1)",
      {address.zip});
  return rows->IsEmpty() ? sent : rows->FirstText();
}

void RequireCounty(Database& database, std::string_view column, const std::string& code) {
  if (code.empty() || !CountyName(database, code).empty()) return;
  throw Failure(Failure::Kind::kRefused, std::string(column) + " cannot be " + platform::Quoted(code) +
                                             ": there is no such county. Nothing was saved.");
}

/// The county that came with an address; "" where it is the one of the address before, which lay elsewhere.
std::string SentCounty(const Plan& plan, std::string_view prefix) {
  const auto sent = plan.after.find(Column(prefix, "CNTY_CD"));
  if (sent == plan.after.end()) return "";
  const auto stored = plan.before.find(sent->first);
  if (stored == plan.before.end() || stored->second != sent->second) return sent->second;
  const auto area = [&](const CustomerValues& values) {
    const auto address = AddressOf(values, prefix);
    return std::pair(address.state, address.zip.substr(0, kZipLength));
  };
  return area(plan.before) == area(plan.after) ? sent->second : "";
}

/// A suggestion that was accepted is stored as it was seen, or not at all.
void RequireSuggestionsToPass(const Exchange& exchange, const Plan& plan, int failed) {
  const auto accepted = exchange.keys.Number(request_key::kAcceptedSuggestions).value_or(0);
  for (const auto& place : kAddressPlaces) {
    if ((accepted & failed & place.failed) == 0) continue;
    throw Failure(
        Failure::Kind::kRefused,
        "The accepted suggestion " + platform::Quoted(AddressOf(plan.after, place.prefix).line1) +
            " does not pass the verification itself. Nothing was saved; do not accept it, or correct "
            "the address.");
  }
}

/// Puts what came of the verification into what is stored.
void TakeVerdict(Exchange& exchange, Plan& plan, std::string_view prefix) {
  const auto county = Column(prefix, "CNTY_CD");
  const auto mark = Column(prefix, "VRFY_CD");
  if (!HasAddress(plan.after, prefix)) {
    plan.after[mark] = kVerified;
    plan.after[county].clear();
    return;
  }
  auto address = AddressOf(plan.after, prefix);
  const auto& verdict = VerdictOn(exchange, address);
  const bool passed = verdict.kind == AddressVerdict::Kind::kPassed;
  const auto sent_county = SentCounty(plan, prefix);
  if (passed) address = verdict.address;
  SetAddress(plan.after, prefix, address);
  plan.after[mark] = passed ? kVerified : kFailed;
  if (passed && !CountyName(exchange.database, address.county_code).empty())
    plan.after[county] = address.county_code;
  else
    plan.after[county] = CountyOf(exchange.database, address, sent_county);
}

/// The customer's own county is that of where they live, or else get their mail.
void SettleCounties(Exchange& exchange, Plan& plan) {
  bool changed = false;
  for (const auto& place : kAddressPlaces) {
    const auto column = Column(place.prefix, "CNTY_CD");
    if (plan.IsChanged(place.prefix)) {
      RequireCounty(exchange.database, column, plan.after[column]);
      TakeVerdict(exchange, plan, place.prefix);
      changed = true;
    } else {
      plan.after[column] = plan.before[column];
    }
  }
  if (!changed) return;
  auto& county = plan.after["QZ_CNTY_NBR"];
  for (const auto* column : {"MAIL_CNTY_CD", "RES_CNTY_CD"})
    if (!plan.after[column].empty()) county = plan.after[column];
  if (county.empty()) county = CountyOfOffice(exchange.database);
}

/// Mail came back from a place: a mark that the record does not bring goes when the address has become
/// another place and passed, or is not there any more.
void SettleMarks(const Exchange& exchange, Plan& plan) {
  const auto came_back_from = [&](const platform::PostalAddress& address) {
    return std::ranges::any_of(kAddressPlaces, [&](const AddressPlace& place) {
      const auto mark = plan.before.find(Column(place.prefix, "RTND_IND"));
      return mark != plan.before.end() && mark->second == "Y" &&
             exchange.verifier.IsSamePlace(AddressOf(plan.before, place.prefix), address);
    });
  };
  for (const auto& place : kAddressPlaces) {
    const auto mark = Column(place.prefix, "RTND_IND");
    const bool is_mended =
        plan.IsChanged(place.prefix) && plan.after[Column(place.prefix, "VRFY_CD")] == kVerified;
    if (plan.adds || !is_mended || plan.given.contains(mark)) continue;
    if (!came_back_from(AddressOf(plan.after, place.prefix))) plan.after[mark] = "N";
  }
}

/// One address of the answer to a save whose verification failed: what is suggested, or what passed.
void AnswerAddress(const Exchange& exchange, const Plan& plan, std::string_view prefix, RecordSet& row) {
  platform::PostalAddress address = AddressOf(plan.after, prefix);
  address.county_code = plan.before.contains(Column(prefix, "CNTY_CD")) && !plan.IsChanged(prefix)
                            ? plan.before.at(Column(prefix, "CNTY_CD"))
                            : "";
  if (NeedsVerification(plan, prefix))
    address = VerdictOn(exchange, address = AddressOf(plan.after, prefix)).address;
  if (address.county_code.empty() && !address.zip.empty())
    address.county_code = CountyOf(exchange.database, address, "");
  if (address.county.empty()) address.county = CountyName(exchange.database, address.county_code);
  const std::pair<std::string_view, std::string> parts[] = {
      {"ADDR_1", address.line1},
      {"ADDR_2", address.line2},
      {"CITY", address.city},
      {"ST", address.state},
      {"ZIP_CD", platform::ReplaceAll(address.zip, "-", "")},
      {"COUNTY", address.county},
      {"CNTY_CD", address.county_code}};
  for (const auto& [part, text] : parts) row.Set(Column(prefix, part), text);
}

RecordSet& AnswerRow(Exchange& exchange, const std::string& customer, int failed) {
  auto& row = exchange.reply.AddRecord(
      record_name::kCustomer, {platform::kCustomerSaveColumns.begin(), platform::kCustomerSaveColumns.end()});
  row.AddNew();
  row.Set("CUST_ID", customer);
  row.Set("FINALIST_IND", failed);
  return row;
}

/// Which addresses failed, as FINALIST_IND says it.
int FailedAddresses(const Exchange& exchange, const Plan& plan) {
  int failed = 0;
  for (const auto& place : kAddressPlaces) {
    if (!NeedsVerification(plan, place.prefix)) continue;
    const auto& verdict = VerdictOn(exchange, AddressOf(plan.after, place.prefix));
    if (verdict.kind != AddressVerdict::Kind::kPassed) failed += place.failed;
  }
  return failed;
}

std::int64_t Update(Exchange& exchange, const Plan& plan) {
  const auto number = NextChange(exchange.database, plan.customer);
  if (!StoreCustomerChanges(exchange, plan.customer, number, plan.before, plan.after)) return 0;
  const auto before = FindCustomer(exchange.database, plan.customer);
  UpdateStoredCustomer(exchange.database, plan.customer, number, plan.before, plan.after);
  IndexCustomer(exchange.database, plan.customer);
  const auto corrected =
      RescheduleCorrectedLetters(exchange, before, FindCustomer(exchange.database, plan.customer));
  ClearReturnedMail(exchange, plan.customer, plan.after);
  return corrected;
}

void Add(Exchange& exchange, Plan& plan) {
  constexpr std::int64_t kFirst = 1;
  plan.customer = TakeNewCustomerId(exchange.database);
  InsertCustomer(exchange.database, plan.customer, plan.after);
  StoreCustomerChanges(exchange, plan.customer, kFirst, {}, plan.after);
  IndexCustomer(exchange.database, plan.customer);
}

}  // namespace

std::vector<platform::PostalAddress> AddressesToVerify(Exchange& exchange) {
  const auto plan = MakePlan(exchange);
  std::vector<platform::PostalAddress> addresses;
  for (const auto& place : kAddressPlaces)
    if (NeedsVerification(plan, place.prefix)) addresses.push_back(AddressOf(plan.after, place.prefix));
  return addresses;
}

void SaveCustomer(Exchange& exchange) {
  auto plan = MakePlan(exchange);
  const auto failed = FailedAddresses(exchange, plan);
  if (plan.must_pass && failed != 0) {
    auto& row = AnswerRow(exchange, plan.customer, failed);
    for (const auto& place : kAddressPlaces) AnswerAddress(exchange, plan, place.prefix, row);
    return;
  }
  RequireSuggestionsToPass(exchange, plan, failed);
  SettleCounties(exchange, plan);
  SettleMarks(exchange, plan);
  std::int64_t corrected = 0;
  if (plan.adds)
    Add(exchange, plan);
  else
    corrected = Update(exchange, plan);
  AnswerRow(exchange, plan.customer, 0);
  exchange.reply
      .AddRecord(record_name::kRescheduled,
                 {platform::kRescheduledColumns.begin(), platform::kRescheduledColumns.end()})
      .Append({"<XML_ROW><XML_COL>" + std::to_string(corrected) + "</XML_COL></XML_ROW>"});
}

}  // namespace server
