#include "server/customers/customer_query.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "platform/search_text.h"
#include "platform/text.h"

namespace server {
namespace {

using platform::RecordSet;
using Words = CustomerQuery::Words;

constexpr std::size_t kMostWords = 32;
// "+1 (555) 011-4201 89214"; more groups than that are one number.
constexpr std::size_t kMostGroups = 5;
// Fewer digits than that are part of a number ("62-0001", "24/7"): half the register has one that begins so.
constexpr std::size_t kLeastDigitsApart = 3;
constexpr std::size_t kLocalPhoneDigits = 7;
constexpr std::size_t kPhoneDigits = 10;
constexpr std::size_t kAccountDigits = 13;
constexpr std::size_t kAccountPrefixDigits = 2;
// Behind all names that begin with a letter or digit of English.
constexpr const char* kNoName = "~";

constexpr auto kNames = std::to_array<std::string_view>(
    {"CUST_BSNS_NM", "FIRST_NM", "MID_NM", "LAST_NM", "SUFX_NM", "CO_CNTCT_NM"});
constexpr auto kNamesListed = std::to_array<std::string_view>({"CUST_BSNS_NM", "FIRST_NM", "LAST_NM"});
constexpr auto kPlaces =
    std::to_array<std::string_view>({"MAIL_CITY", "MAIL_ZIP_CD", "RES_CITY", "RES_ZIP_CD"});
constexpr auto kNumbers =
    std::to_array<std::string_view>({"CUST_ID", "ACCNT_NBR", "PHN_NBR", "DRVR_LIC_NBR", "RGSTRTN_NBR"});

Words WordsOf(std::string_view text) {
  return platform::SearchWords(platform::ReplaceAll(text, "&", " and "));
}

Words WordsOf(const RecordSet& customers, std::size_t row, std::string_view column) {
  return customers.HasColumn(column) ? WordsOf(customers.Text(row, column)) : Words();
}

/// "O'Marchbanks" is found by "omarch" and by "march".
Words PartsAtApostrophes(const RecordSet& customers, std::size_t row, std::string_view column) {
  auto text = customers.HasColumn(column) ? customers.Text(row, column) : "";
  for (const auto* apostrophe : {"'", "\u2019", "\u02BC", "`"})
    text = platform::ReplaceAll(text, apostrophe, " ");
  return WordsOf(text);
}

std::string Joined(std::span<const std::string> words, std::string_view between = "") {
  std::string joined;
  for (const auto& word : words) joined += (joined.empty() ? std::string_view() : between), joined += word;
  return joined;
}

bool IsDigits(std::string_view word) {
  return std::ranges::all_of(word, [](char character) { return character >= '0' && character <= '9'; });
}

class Keywords {
 public:
  void Add(const std::string& word) {
    if (!word.empty() && std::ranges::find(words_, word) == words_.end()) words_.push_back(word);
  }
  void AddAll(const Words& words) {
    for (const auto& word : words) Add(word);
  }
  /// A number may be given from any of its groups on, as a telephone number without the area code.
  void AddNumber(const Words& groups) {
    if (groups.empty()) return;
    for (std::size_t first = 0; first < groups.size(); ++first) Add(Joined(std::span(groups).subspan(first)));
    AddWhole(Joined(groups));
  }
  /// Digits in groups are looked for together.
  void AddDigitsOf(const Words& words) {
    for (auto first = words.begin(); first != words.end();) {
      first = std::find_if(first, words.end(), IsDigits);
      const auto end = std::find_if_not(first, words.end(), IsDigits);
      for (; first != end; ++first) Add(Joined({first, end}));
    }
  }
  void AddWhole(const std::string& number) { Add(kWholeNumberMark + number); }
  std::string Text() const { return Joined(words_, " "); }

 private:
  Words words_;
};

void AddPhone(Keywords& keywords, const std::string& number) {
  if (number.size() != kPhoneDigits) return;
  const auto local = number.substr(kPhoneDigits - kLocalPhoneDigits);
  keywords.Add(local);
  keywords.AddWhole(local);
}

std::string SortName(const RecordSet& customers, std::size_t row) {
  auto words = WordsOf(customers, row, "CUST_BSNS_NM");
  if (words.empty()) {
    for (const auto* column : {"LAST_NM", "FIRST_NM", "MID_NM"})
      for (auto& word : WordsOf(customers, row, column)) words.push_back(std::move(word));
  }
  return words.empty() ? kNoName : Joined(words, " ");
}

bool StandApart(const Words& numbers) {
  return numbers.size() == 1 ||
         std::ranges::all_of(numbers, [](const auto& number) { return number.size() >= kLeastDigitsApart; });
}

/// The ways to cut the groups into numbers.
CustomerQuery::Part ReadDigits(std::span<const std::string> groups) {
  if (groups.size() > kMostGroups) return {{Joined(groups)}};
  CustomerQuery::Part ways;
  const auto way_count = std::uint32_t{1} << (groups.size() - 1);
  for (std::uint32_t way = 0; way < way_count; ++way) {
    Words numbers = {groups.front()};
    for (std::size_t group = 1; group < groups.size(); ++group) {
      if (((way >> (group - 1)) & 1U) == 0)
        numbers.back() += groups[group];
      else
        numbers.push_back(groups[group]);
    }
    if (StandApart(numbers)) ways.push_back(std::move(numbers));
  }
  return ways;
}

/// The country code of a telephone number may stand before it.
void ReadWithoutCountryCode(CustomerQuery::Part& ways) {
  for (std::size_t way = 0, count = ways.size(); way < count; ++way) {
    auto numbers = ways[way];
    auto& first = numbers.front();
    if (first.size() != kPhoneDigits + 1 || !first.starts_with('1')) continue;
    first.erase(0, 1);
    ways.push_back(std::move(numbers));
  }
}

void AddPart(CustomerQuery& query, CustomerQuery::Part part) {
  if (std::ranges::find(query.parts, part) == query.parts.end()) query.parts.push_back(std::move(part));
}

void AddParts(CustomerQuery& query, const Words& words) {
  for (std::size_t at = 0; at < words.size();) {
    const auto end = std::find_if_not(words.begin() + static_cast<std::ptrdiff_t>(at), words.end(), IsDigits);
    const auto digits = static_cast<std::size_t>(end - words.begin()) - at;
    if (digits == 0) {
      AddPart(query, {{words[at++]}});
      continue;
    }
    auto ways = ReadDigits(std::span(words).subspan(at, digits));
    ReadWithoutCountryCode(ways);
    AddPart(query, std::move(ways));
    at += digits;
  }
}

}  // namespace

std::vector<std::string_view> SearchedColumns() {
  std::vector<std::string_view> columns(kNames.begin(), kNames.end());
  columns.insert(columns.end(), kPlaces.begin(), kPlaces.end());
  columns.insert(columns.end(), kNumbers.begin(), kNumbers.end());
  return columns;
}

CustomerKeywords KeywordsOf(const RecordSet& customers, std::size_t row) {
  Keywords keywords;
  for (const auto column : kNames) {
    const auto words = WordsOf(customers, row, column);
    keywords.AddAll(words);
    keywords.AddDigitsOf(words);
    keywords.AddAll(PartsAtApostrophes(customers, row, column));
  }
  for (const auto column : kPlaces) keywords.AddAll(WordsOf(customers, row, column));
  for (const auto column : kNumbers) keywords.AddNumber(WordsOf(customers, row, column));
  AddPhone(keywords, Joined(WordsOf(customers, row, "PHN_NBR")));
  const auto account = Joined(WordsOf(customers, row, "ACCNT_NBR"));
  if (account.size() >= kAccountDigits) keywords.Add(account.substr(kAccountPrefixDigits));
  for (const auto column : kNamesListed) {
    const auto words = WordsOf(customers, row, column);
    if (!words.empty()) keywords.Add(kNameStartMark + words.front());
  }
  return {.text = keywords.Text(), .sort_name = SortName(customers, row)};
}

std::optional<CustomerQuery> ReadCustomerQuery(std::string_view text) {
  const auto words = WordsOf(text);
  if (words.empty() || words.size() > kMostWords) return std::nullopt;
  CustomerQuery query{.parts = {}, .numbers = {Joined(words)}, .first_word = words.front()};
  AddParts(query, words);
  for (const auto& part : query.parts) {
    for (const auto& way : part) query.numbers.insert(query.numbers.end(), way.begin(), way.end());
  }
  std::ranges::sort(query.numbers);
  const auto [first, last] = std::ranges::unique(query.numbers);
  query.numbers.erase(first, last);
  return query;
}

}  // namespace server
