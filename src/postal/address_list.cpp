#include "postal/address_list.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "platform/failure.h"
#include "platform/text.h"
#include "postal/comma_table.h"

namespace postal {
namespace {

using platform::AddressVerdict;
using platform::Failure;
using platform::PostalAddress;

constexpr std::size_t kAbsent = std::string::npos;
constexpr std::size_t kToldEvery = 1000;
constexpr int kFailuresInARow = 3;

struct ListColumn {
  std::string_view name;
  std::string PostalAddress::*part;
};
constexpr auto kListColumns = std::to_array<ListColumn>({
    {"line1", &PostalAddress::line1},
    {"line2", &PostalAddress::line2},
    {"city", &PostalAddress::city},
    {"state", &PostalAddress::state},
    {"zip", &PostalAddress::zip},
});
constexpr auto kResultColumns = std::to_array<ListColumn>({
    {"verified_line1", &PostalAddress::line1},
    {"verified_line2", &PostalAddress::line2},
    {"verified_city", &PostalAddress::city},
    {"verified_state", &PostalAddress::state},
    {"verified_zip", &PostalAddress::zip},
    {"verified_county_code", &PostalAddress::county_code},
    {"verified_county", &PostalAddress::county},
});

/// "Line 1" and "line_1" as "line1".
std::string ColumnName(std::string_view heading) {
  std::string name;
  for (const char character : platform::LowerCase(heading)) {
    if (character != ' ' && character != '_') name += character;
  }
  return name;
}

using Places = std::array<std::size_t, kListColumns.size()>;

Places FindColumns(const std::vector<std::string>& headings) {
  Places places = {};
  for (std::size_t column = 0; column < kListColumns.size(); ++column) {
    places[column] = kAbsent;
    for (std::size_t place = 0; place < headings.size(); ++place) {
      if (ColumnName(headings[place]) != kListColumns[column].name) continue;
      if (places[column] != kAbsent)
        throw Failure(Failure::Kind::kDamaged, "Line 1 of the list names the column " +
                                                   std::string(kListColumns[column].name) +
                                                   " twice. Remove one.");
      places[column] = place;
    }
    if (places[column] == kAbsent && kListColumns[column].name != "line2")
      throw Failure(Failure::Kind::kDamaged,
                    "Line 1 of the list has no column " + std::string(kListColumns[column].name) +
                        ". It has to name the columns line1, city, state and zip, and line2 "
                        "where there is one.");
  }
  return places;
}

class ListRun {
 public:
  ListRun(std::string_view list, platform::AddressVerifier& verifier, const AddressListUser& user)
      : reader_(list), verifier_(verifier), user_(user) {}

  AddressCounts Run() {
    auto headings = reader_.Next();
    if (!headings || !headings->fault.empty())
      throw Failure(Failure::Kind::kDamaged,
                    "The list's first line " + (headings ? headings->fault : std::string("is missing")) +
                        ". It has to name the columns line1, line2, city, state and zip.");
    places_ = FindColumns(headings->fields);
    columns_ = headings->fields.size();
    headings->fields.emplace_back("verdict");
    for (const auto& column : kResultColumns) headings->fields.emplace_back(column.name);
    user_.take(CommaRecord(headings->fields));
    while (!(user_.is_stopped && user_.is_stopped())) {
      auto record = reader_.Next();
      if (!record) break;
      Take(*record);
      if (user_.progress && (counts_.Verified() + counts_.bad_lines) % kToldEvery == 0)
        user_.progress(counts_);
    }
    return counts_;
  }

 private:
  void Take(CommaTableReader::Record& record) {
    if (!record.fault.empty()) return TellBad(record.line, record.fault);
    if (record.fields.size() != columns_)
      return TellBad(record.line, "has " + std::to_string(record.fields.size()) + " fields for " +
                                      std::to_string(columns_) + " columns");
    PostalAddress address;
    for (std::size_t column = 0; column < kListColumns.size(); ++column) {
      if (places_[column] != kAbsent) address.*kListColumns[column].part = record.fields[places_[column]];
    }
    if (const auto verdict = Verify(address, record.line)) Write(record.fields, *verdict);
  }

  std::optional<AddressVerdict> Verify(const PostalAddress& address, std::size_t line) {
    try {
      auto verdict = verifier_.Verify(address);
      failures_ = 0;
      return verdict;
    } catch (Failure& failure) {
      if (++failures_ == kFailuresInARow) {
        failure.AddContext("verifying line " + std::to_string(line) + " of the list");
        throw;
      }
      TellBad(line, "was not verified: " + failure.description());
      return std::nullopt;
    }
  }

  void Write(std::vector<std::string>& fields, const AddressVerdict& verdict) {
    auto& count = verdict.kind == AddressVerdict::Kind::kPassed      ? counts_.passed
                  : verdict.kind == AddressVerdict::Kind::kSuggested ? counts_.suggested
                                                                     : counts_.none;
    ++count;
    fields.emplace_back(VerdictWord(verdict.kind));
    for (const auto& column : kResultColumns) fields.push_back(verdict.address.*column.part);
    user_.take(CommaRecord(fields));
  }

  void TellBad(std::size_t line, const std::string& what) {
    ++counts_.bad_lines;
    user_.tell("Line " + std::to_string(line) + " of the list " + what + (what.ends_with('.') ? "" : ".") +
               " It is left out.");
  }

  CommaTableReader reader_;
  platform::AddressVerifier& verifier_;
  const AddressListUser& user_;
  Places places_ = {};
  std::size_t columns_ = 0;
  AddressCounts counts_;
  int failures_ = 0;
};

}  // namespace

std::string_view VerdictWord(AddressVerdict::Kind kind) {
  switch (kind) {
    case AddressVerdict::Kind::kPassed:
      return "passed";
    case AddressVerdict::Kind::kSuggested:
      return "suggested";
    case AddressVerdict::Kind::kUnknown:
      return "none";
  }
  return "";
}

AddressCounts VerifyAddressList(std::string_view list, platform::AddressVerifier& verifier,
                                const AddressListUser& user) {
  return ListRun(list, verifier, user).Run();
}

}  // namespace postal
