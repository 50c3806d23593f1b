#include "server/customers/given_customer.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "platform/agreed/customer_numbers.h"
#include "platform/failure.h"
#include "platform/text.h"
#include "server/customers/stored_customer.h"

namespace server {
namespace {

using platform::Failure;

enum class Characters { kAny, kName, kCity, kZip, kState, kCounty, kMark };

struct KeptColumn {
  std::string_view name;
  std::size_t longest;
  std::string_view shown;  ///< what a clerk calls it
  Characters characters = Characters::kAny;
};

// By the record's names. Nobody but the server sets QZ_CNTY_NBR and *_VRFY_CD.
constexpr auto kKeptColumns = std::to_array<KeptColumn>({
    {"CUST_BSNS_NM", 72, "business name"},
    {"CO_CNTCT_NM", 30, "contact name"},
    {"FIRST_NM", 20, "first name", Characters::kName},
    {"MID_NM", 20, "middle name", Characters::kName},
    {"LAST_NM", 25, "last name", Characters::kName},
    {"SUFX_NM", 3, "suffix"},
    {"PHN_NBR", 10, "telephone"},
    {"ACCNT_NBR", 13, "fuel tax account"},
    {"MAIL_ADDR_1", platform::kLongestAddressLine, "mailing address line 1"},
    {"MAIL_ADDR_2", platform::kLongestAddressLine, "mailing address line 2"},
    {"MAIL_CITY", platform::kLongestCity, "mailing city", Characters::kCity},
    {"MAIL_ST", platform::kLongestState, "mailing state", Characters::kState},
    {"MAIL_ZIP_CD", platform::kLongestZip, "mailing zip", Characters::kZip},
    {"MAIL_CNTY_CD", 3, "mailing county", Characters::kCounty},
    {"MAIL_RTND_IND", 1, "mailing return mail", Characters::kMark},
    {"RES_ADDR_1", platform::kLongestAddressLine, "resident address line 1"},
    {"RES_ADDR_2", platform::kLongestAddressLine, "resident address line 2"},
    {"RES_CITY", platform::kLongestCity, "resident city", Characters::kCity},
    {"RES_ST", platform::kLongestState, "resident state", Characters::kState},
    {"RES_ZIP_CD", platform::kLongestZip, "resident zip", Characters::kZip},
    {"RES_CNTY_CD", 3, "resident county", Characters::kCounty},
    {"RES_RTND_IND", 1, "resident return mail", Characters::kMark},
    {"FUEL_TAX_IND", 1, "fuel tax mark", Characters::kMark},
});
constexpr auto kServersColumns =
    std::to_array<std::string_view>({"MAIL_VRFY_CD", "RES_VRFY_CD", "QZ_CNTY_NBR"});

constexpr auto kAddressParts = std::to_array<std::string_view>({"ADDR_1", "ADDR_2", "CITY", "ST", "ZIP_CD"});

// Other registers keep these names of the customers that they have, too.
constexpr auto kKeptElsewhere =
    std::to_array<std::string_view>({"DRVR_LIC_IND", "RGSTRTN_IND", "DLR_IND", "ACDNT_IND", "ENFRC_IND"});
constexpr auto kLockedNames =
    std::to_array<std::string_view>({"CUST_BSNS_NM", "CO_CNTCT_NM", "FIRST_NM", "MID_NM", "SUFX_NM"});

const std::string& At(const CustomerValues& values, std::string_view column) {
  static const std::string kNothing;
  const auto value = values.find(column);
  return value == values.end() ? kNothing : value->second;
}

const std::string& Part(const CustomerValues& values, std::string_view prefix, std::string_view part) {
  return At(values, std::string(prefix) + std::string(part));
}

constexpr std::string_view kYesOrNo = "it is \"Y\" or \"N\".";

[[noreturn]] void Refuse(std::string_view column, std::string_view value, std::string_view why) {
  throw Failure(Failure::Kind::kRefused, std::string(column) + " cannot be " + platform::Quoted(value) +
                                             ": " + std::string(why) + " Nothing was saved.");
}

// Blanks that part words as the plain one does, and what joins the letters of some languages.
constexpr auto kHarmless =
    std::to_array<std::string_view>({" ", "\u00A0", "\u202F", "\u3000", "\u200C", "\u200D"});

bool IsControl(std::string_view character) {
  const char first = character.front();
  if (first == '\xC2') return character[1] < '\xA0';
  return (first >= 0 && first < ' ') || first == '\x7F';
}

/// Whether a line break is in it, or what nobody sees: a mark of direction, a space without width.
bool HoldsUnseen(std::string_view text) {
  if (!platform::IsValidUtf8(text)) return true;
  while (!text.empty()) {
    const auto character = platform::FirstCharacters(text, 1);
    const bool is_blank = platform::IsBlank(character);
    if (IsControl(character) || (is_blank && std::ranges::find(kHarmless, character) == kHarmless.end()))
      return true;
    text.remove_prefix(character.size());
  }
  return false;
}

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}
bool IsAsciiLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

bool IsZip(std::string_view text) {
  return (text.size() == 5 || text.size() == 9) && std::ranges::all_of(text, IsDigit);
}

/// Why the characters are wrong; "" where they are not.
std::string_view WhyNot(Characters characters, std::string_view text) {
  if (HoldsUnseen(text)) return "it holds line breaks or characters that show nothing.";
  switch (characters) {
    case Characters::kAny:
      return "";
    case Characters::kName:
      return platform::HoldsOnlyLetters(text, U" '\u2019-.%") ? "" : "a name is made of letters.";
    case Characters::kCity:
      return platform::HoldsOnlyLetters(text, U" '\u2019-.") ? "" : "the name of a city is made of letters.";
    case Characters::kZip:
      return IsZip(text) ? "" : "a zip code has five digits, or nine.";
    case Characters::kState:
      return text.size() == 2 && std::ranges::all_of(text, IsAsciiLetter) ? "" : "a state has two letters.";
    case Characters::kCounty:
      return std::ranges::all_of(text, [](char c) { return IsDigit(c) || IsAsciiLetter(c); })
                 ? ""
                 : "it is made of digits and letters.";
    case Characters::kMark:
      return text == "Y" || text == "N" ? "" : kYesOrNo;
  }
  return "";
}

void CheckValue(const KeptColumn& column, const std::string& value) {
  if (value.empty()) return;
  if (const auto why = WhyNot(column.characters, value); !why.empty()) Refuse(column.name, value, why);
  if (column.name == "PHN_NBR") {
    if (const auto why = platform::WhyNoPhoneNumber(value); !why.empty()) Refuse(column.name, value, why);
  } else if (column.name == "ACCNT_NBR") {
    if (const auto why = platform::WhyNoFuelTaxAccount(value); !why.empty()) Refuse(column.name, value, why);
  } else if (platform::CharacterCount(value) > column.longest) {
    Refuse(column.name, value, "it has more than " + std::to_string(column.longest) + " characters.");
  }
}

void RequireNames(const CustomerValues& before, const CustomerValues& after, bool individual) {
  const auto require = [&](std::string_view column, std::size_t least, std::string_view why) {
    const auto& name = At(after, column);
    if (name == At(before, column) && !before.empty()) return;
    if (platform::CharacterCount(name) < least) Refuse(column, name, why);
  };
  if (individual) {
    const auto& business = At(after, "CUST_BSNS_NM");
    if (!business.empty() && At(before, "CUST_BSNS_NM").empty())
      Refuse("CUST_BSNS_NM", business, "a person has none.");
    require("FIRST_NM", 1, "a person has a first name.");
    require("LAST_NM", 1, "a person has a last name.");
    return;
  }
  const auto& last_name = At(after, "LAST_NM");
  if (!last_name.empty() && last_name != At(before, "LAST_NM"))
    Refuse("LAST_NM", last_name, "a business has none.");
  const auto least = At(after, "CUST_BSNS_NM").find('%') == std::string::npos ? 2U : 3U;
  require("CUST_BSNS_NM", least, "the name of a business has two characters or more.");
}

/// An address is there as a whole, or not at all where it may be missing.
void RequireWhole(const CustomerValues& after, std::string_view prefix, bool may_be_missing) {
  if (may_be_missing && !HasAddress(after, prefix)) return;
  const std::string begin(prefix);
  if (Part(after, prefix, "ADDR_1").empty() && Part(after, prefix, "ADDR_2").empty())
    Refuse(begin + "ADDR_1", "", "an address has a line.");
  for (const auto* part : {"CITY", "ST", "ZIP_CD"})
    if (Part(after, prefix, part).empty())
      Refuse(begin + part, "", "an address has a city, a state and a zip code.");
}

void CheckLockedNames(const CustomerValues& before, const CustomerValues& after) {
  const auto marked =
      std::ranges::find_if(kKeptElsewhere, [&](std::string_view mark) { return At(before, mark) == "Y"; });
  if (marked == kKeptElsewhere.end()) return;
  for (const auto column : kLockedNames) {
    if (At(before, column) != At(after, column))
      Refuse(
          column, At(after, column),
          "another register keeps this customer's name (" + std::string(*marked) + "); it is changed there.");
  }
}

std::string WithoutPunctuation(std::string_view column, std::string value) {
  if (column.ends_with("ZIP_CD")) return platform::ReplaceAll(platform::ReplaceAll(value, "-", ""), " ", "");
  if (column.ends_with("_ST")) return platform::UpperCase(value);
  if (column != "PHN_NBR" && column != "ACCNT_NBR") return value;
  const auto is_punctuation = [](char c) {
    return std::string_view(" ()-./+").find(c) != std::string_view::npos;
  };
  std::erase_if(value, is_punctuation);
  return value;
}

bool Differ(const CustomerValues& before, const CustomerValues& after, std::string_view prefix) {
  return !(AddressOf(before, prefix) == AddressOf(after, prefix));
}

}  // namespace

std::optional<CustomerValues> FindCustomerValues(Database& database, const std::string& id) {
  const auto rows = database.Select(std::string(kSelectCustomers) + "WHERE CUST_ID = ?", {id});
  if (rows->IsEmpty()) return std::nullopt;
  CustomerValues values;
  for (const auto& column : kKeptColumns) values[std::string(column.name)] = rows->Text(column.name);
  for (const auto column : kServersColumns) values[std::string(column)] = rows->Text(column);
  for (const auto column : kKeptElsewhere) values[std::string(column)] = rows->Text(column);
  return values;
}

CustomerValues GivenCustomerValues(const platform::RecordSet& rows, const CustomerValues& before) {
  CustomerValues values;
  for (const auto& column : kKeptColumns) {
    if (!rows.HasColumn(column.name) || rows.Get(column.name).IsNull()) continue;
    auto given = WithoutPunctuation(column.name, std::string(platform::TrimBlanks(rows.Text(column.name))));
    const auto& stored = At(before, column.name);
    if (column.characters == Characters::kMark && given.empty()) Refuse(column.name, "", kYesOrNo);
    const bool is_stored = !stored.empty() && given == WithoutPunctuation(column.name, stored);
    values[std::string(column.name)] = is_stored ? stored : std::move(given);
  }
  return values;
}

std::string_view WordsForColumn(std::string_view column) {
  const auto* const found = std::ranges::find(kKeptColumns, column, &KeptColumn::name);
  return found == kKeptColumns.end() ? "" : found->shown;
}

bool IsIndividual(const CustomerValues& values) {
  return !At(values, "LAST_NM").empty();
}

bool HasAddress(const CustomerValues& values, std::string_view prefix) {
  return std::ranges::any_of(kAddressParts, [&](auto part) { return !Part(values, prefix, part).empty(); });
}

platform::PostalAddress AddressOf(const CustomerValues& values, std::string_view prefix) {
  return {.line1 = Part(values, prefix, "ADDR_1"),
          .line2 = Part(values, prefix, "ADDR_2"),
          .city = Part(values, prefix, "CITY"),
          .state = Part(values, prefix, "ST"),
          .zip = WithoutPunctuation("ZIP_CD", Part(values, prefix, "ZIP_CD"))};
}

void SetAddress(CustomerValues& values, std::string_view prefix, const platform::PostalAddress& address) {
  const std::string begin(prefix);
  values[begin + "ADDR_1"] = address.line1;
  values[begin + "ADDR_2"] = address.line2;
  values[begin + "CITY"] = address.city;
  values[begin + "ST"] = address.state;
  values[begin + "ZIP_CD"] = WithoutPunctuation("ZIP_CD", address.zip);
}

void CheckCustomer(const CustomerValues& before, const CustomerValues& after, bool individual) {
  for (const auto& column : kKeptColumns) {
    const auto& value = At(after, column.name);
    if (value != At(before, column.name)) CheckValue(column, value);
  }
  CheckLockedNames(before, after);
  RequireNames(before, after, individual);
  if (before.empty() || Differ(before, after, kMailPrefix)) RequireWhole(after, kMailPrefix, false);
  if (before.empty() || Differ(before, after, kResidentialPrefix)) {
    const bool had_one = HasAddress(before, kResidentialPrefix);
    RequireWhole(after, kResidentialPrefix, !had_one && !individual);
  }
}

}  // namespace server
