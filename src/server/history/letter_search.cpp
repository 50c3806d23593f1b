#include "server/history/letter_search.h"

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "platform/agreed/letter_record.h"
#include "platform/agreed/record_layouts.h"
#include "platform/failure.h"
#include "platform/text.h"
#include "server/context/stored_context.h"
#include "server/history/letter_time.h"

namespace server {
namespace {

using platform::Failure;
using platform::RecordSet;
using platform::Value;

namespace request_key = platform::request_key;

// One search must not keep the server from everybody else's requests for long. Decision [search-limits].
constexpr std::int64_t kMostLetters = 100'000;
constexpr std::int64_t kMostContexts = 1'000;

// Columns of the record that are not stored with the letter.
constexpr auto kNotStored = std::to_array<std::string_view>({"ACTION", "XML_CONTEXT"});

// What the lists show of the customer. A join would have made the engine think twice where to begin.
constexpr std::string_view kCustomerName =
    "(SELECT COALESCE(NULLIF(TRIM(CUST_BSNS_NM), ''), FIRST_NM || ' ' || LAST_NM) FROM customer"
    " WHERE customer.CUST_ID = letter_history.CUST_ID)";

// Stored as numbers; everything else is text.
constexpr auto kNumbers = std::to_array<std::string_view>({"SEQ_NBR", "ADDR_TYP_CD", "FLS_BTCH_NBR"});

// What is compared as it stands: keys that are columns, too.
constexpr auto kTextCriteria = std::to_array<std::string_view>(
    {request_key::kLetterType, request_key::kCustomer, request_key::kFormNumber, request_key::kCheckDigit,
     request_key::kFormType, request_key::kTroop, request_key::kDistrict});

// Each of these narrows a search to some letters. Beside one of them the others must not tempt the engine,
// which may have no statistics yet, to read the tenth part of the history by their own index.
constexpr auto kNarrowKeys = std::to_array<std::string_view>(
    {request_key::kCustomer, request_key::kFormNumber, request_key::kBatch, request_key::kLetters});
constexpr auto kWideColumns =
    std::to_array<std::string_view>({request_key::kLetterType, request_key::kTroop});

template <std::size_t count>
bool IsOneOf(const std::array<std::string_view, count>& names, std::string_view name) {
  return std::ranges::find(names, name) != names.end();
}

struct Outcome {
  std::string_view name;
  std::string_view condition;  ///< before the statuses of letters whose processing failed; "" for all letters
};
constexpr auto kOutcomes = std::to_array<Outcome>({
    {platform::letter_outcome::kAll, ""},
    {platform::letter_outcome::kSucceeded, "PRNT_STTS_CD NOT IN "},
    {platform::letter_outcome::kFailed, "PRNT_STTS_CD IN "},
});

/// "('F', 'R')".
std::string FailedStatuses() {
  std::string list;
  for (const auto status : platform::print_status::kFailures)
    list += (list.empty() ? "('" : ", '") + std::string(status) + "'";
  return list + ")";
}

[[noreturn]] void Refuse(std::string_view key, const std::string& value, std::string_view advice) {
  throw Failure(Failure::Kind::kRefused, "The key \"" + std::string(key) + "\" has the value \"" + value +
                                             "\"; send " + std::string(advice) + ".");
}

/// Conditions and the values at their question marks.
class Conditions {
 public:
  explicit Conditions(const RequestKeys& keys)
      : narrow_(std::ranges::any_of(kNarrowKeys, [&](auto name) { return !keys.Text(name).empty(); })) {
    for (const auto column : kTextCriteria) AddText(keys, column);
    AddOutcome(keys);
    AddDays(keys);
    AddLetters(keys);
    if (!keys.Text(request_key::kBatch).empty()) Add("FLS_BTCH_NBR = ?", {*keys.Number(request_key::kBatch)});
  }

  const std::string& text() const { return text_; }
  const std::vector<Value>& values() const { return values_; }

 private:
  void Add(std::string_view condition, const std::vector<Value>& values) {
    text_ += (text_.empty() ? " WHERE " : " AND ") + std::string(condition);
    values_.insert(values_.end(), values.begin(), values.end());
  }

  void AddText(const RequestKeys& keys, std::string_view column) {
    const auto value = keys.Text(column);
    if (value.empty()) return;
    const bool unindexed = narrow_ && IsOneOf(kWideColumns, column);
    Add(std::string(column) + (unindexed ? " || '' = ?" : " = ?"), {platform::UpperCase(value)});
  }

  void AddLetters(const RequestKeys& keys) {
    const auto text = keys.Text(request_key::kLetters);
    if (text.empty()) return;
    std::vector<Value> numbers;
    std::string places;
    std::istringstream list(text);
    for (std::string number; std::getline(list, number, ',');) {
      platform::While("reading SEQ_NBRS", [&] { numbers.emplace_back(Value(number).AsInteger()); });
      places += places.empty() ? "?" : ", ?";
    }
    if (numbers.size() > request_key::kMostLettersNamed)
      Refuse(request_key::kLetters, text.substr(0, 40) + "...",
             "at most " + std::to_string(request_key::kMostLettersNamed) + " numbers");
    Add("SEQ_NBR IN (" + places + ")", numbers);
  }

  void AddOutcome(const RequestKeys& keys) {
    if (!keys.Has(request_key::kOutcome)) return;
    const auto name = keys.Text(request_key::kOutcome);
    const auto outcome = std::ranges::find_if(
        kOutcomes, [&](const Outcome& one) { return platform::EqualsIgnoringCase(one.name, name); });
    if (outcome == kOutcomes.end())
      Refuse(request_key::kOutcome, name, "\"All\", \"Succeeded\" or \"Failed\"");
    if (!outcome->condition.empty()) Add(std::string(outcome->condition) + FailedStatuses(), {});
  }

  void AddDays(const RequestKeys& keys) {
    if (keys.Text(request_key::kDays).empty()) return;
    const auto days = *keys.Days(request_key::kDays);
    const std::string time(kLetterTime);
    // Times are texts: what follows the day sorts behind it, and hour 24 behind every hour it has.
    Add(time + " >= ? AND " + time + " < ?",
        {platform::DateText(days.first), platform::DateText(days.last) + " 24"});
  }

  const bool narrow_;
  std::string text_;
  std::vector<Value> values_;
};

bool WantsContexts(const RequestKeys& keys) {
  const auto thin = platform::UpperCase(keys.Text(request_key::kThin));
  if (thin == "YES") return false;
  if (thin == "NO" || !keys.Has(request_key::kThin)) return true;
  Refuse(request_key::kThin, keys.Text(request_key::kThin), "\"YES\" or \"NO\"");
}

std::string Selected(const Dialect& dialect, const std::string& column) {
  if (IsOneOf(kNotStored, column)) return "NULL AS " + column;
  if (IsOneOf(kNumbers, column)) return column;
  return dialect.Utf8Of(column) + " AS " + column;
}

std::string SelectColumns(const Dialect& dialect) {
  std::string columns;
  for (const auto column : platform::kHistoryColumns) {
    columns += (columns.empty() ? "" : ", ") + Selected(dialect, std::string(column));
  }
  return columns + ", " + dialect.Utf8Of(std::string(kCustomerName)) + " AS CUST_NM";
}

void AddContexts(Database& database, RecordSet& letters) {
  for (std::size_t row = 0; row < letters.RecordCount(); ++row) {
    auto context = FindContext(database, letters.Get(row, "SEQ_NBR").AsInteger());
    if (context) letters.Set(row, "XML_CONTEXT", std::move(*context));
  }
}

}  // namespace

void AnswerLetterSearch(Exchange& exchange) {
  const Conditions conditions(exchange.keys);
  const bool with_contexts = WantsContexts(exchange.keys);
  const auto most = with_contexts ? kMostContexts : kMostLetters;
  auto values = conditions.values();
  values.emplace_back(most + 1);
  const auto letters = exchange.database.Select("SELECT " + SelectColumns(exchange.database.dialect()) +
                                                    " FROM letter_history" + conditions.text() +
                                                    " ORDER BY " + std::string(kLetterTime) + " LIMIT ?",
                                                values);
  if (letters->RecordCount() > static_cast<std::size_t>(most)) {
    throw Failure(Failure::Kind::kRefused, "The search finds more than " + std::to_string(most) +
                                               " letters. Narrow it, to fewer days for instance.");
  }
  if (letters->IsEmpty()) return;
  if (with_contexts) AddContexts(exchange.database, *letters);
  exchange.reply.records.push_back({platform::record_name::kHistory, letters});
}

}  // namespace server
