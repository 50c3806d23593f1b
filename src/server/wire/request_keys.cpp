#include "server/wire/request_keys.h"

#include <algorithm>

#include "platform/agreed/requests.h"
#include "platform/failure.h"
#include "platform/text.h"
#include "platform/value.h"

namespace server {

using platform::Date;
using platform::Failure;

namespace {

using platform::key_operator::kAnd;
using platform::key_operator::kBetween;

void CheckOperator(const platform::KeyItem& key, const KnownKey& understood) {
  const auto comparison = platform::Trim(key.Operator);
  if (comparison == understood.comparison) return;
  const auto other = understood.other_comparison;
  if (!other.empty() && comparison == other) return;
  throw Failure(Failure::Kind::kRefused,
                "The key \"" + key.Key + "\" came with the operator \"" + key.Operator + "\"; send \"" +
                    std::string(understood.comparison) + "\"" +
                    (other.empty() ? "" : " or \"" + std::string(other) + "\"") + ".");
}

Date ReadDay(std::string_view name, std::string_view text) {
  const auto day = platform::ParseDate(platform::Trim(text));
  if (day) return *day;
  throw Failure(Failure::Kind::kRefused, "The key \"" + platform::UpperCase(name) + "\" has the value \"" +
                                             std::string(text) +
                                             "\", which is no day; send it as \"yyyy-mm-dd\".");
}

}  // namespace

std::string KeyName(std::string_view key) {
  static const auto kPrefix = platform::UpperCase(platform::request_key::kPrefix);
  auto name = platform::UpperCase(platform::ReplaceAll(key, " ", ""));
  if (name.starts_with(kPrefix)) name.erase(0, kPrefix.size());
  return name;
}

RequestKeys::RequestKeys(const std::vector<platform::KeyItem>& keys, std::span<const KnownKey> known) {
  for (const auto& key : keys) {
    const auto name = KeyName(key.Key);
    const auto understood = std::ranges::find_if(
        known, [&](const KnownKey& one) { return platform::EqualsIgnoringCase(one.name, name); });
    if (understood == known.end()) {
      throw Failure(Failure::Kind::kRefused,
                    "The server does not know the key \"" + key.Key + "\" in this request.");
    }
    CheckOperator(key, *understood);
    if (Has(name)) throw Failure(Failure::Kind::kRefused, "The key \"" + key.Key + "\" came twice.");
    entries_.push_back(
        {name, std::string(platform::Trim(key.Operator)), std::string(platform::Trim(key.Value))});
  }
}

std::string RequestKeys::Text(std::string_view name) const {
  const auto* entry = Find(name);
  return entry == nullptr ? "" : entry->value;
}

bool RequestKeys::IsYes(std::string_view name) const {
  const auto value = platform::UpperCase(Text(name));
  if (value == "Y") return true;
  if (value == "N" || !Has(name)) return false;
  throw Failure(Failure::Kind::kRefused, "The key \"" + platform::UpperCase(name) + "\" has the value \"" +
                                             value + "\"; send \"Y\" or \"N\".");
}

std::optional<std::int64_t> RequestKeys::Number(std::string_view name) const {
  if (!Has(name)) return std::nullopt;
  return platform::While("reading the key \"" + platform::UpperCase(name) + "\"",
                         [&] { return platform::Value(Text(name)).AsInteger(); });
}

std::optional<DayRange> RequestKeys::Days(std::string_view name) const {
  const auto* entry = Find(name);
  if (entry == nullptr) return std::nullopt;
  const std::string_view value = entry->value;
  if (entry->comparison != kBetween) return DayRange{ReadDay(name, value), ReadDay(name, value)};
  const auto middle = value.find(kAnd);
  if (middle == std::string_view::npos) {
    throw Failure(Failure::Kind::kRefused,
                  "The key \"" + platform::UpperCase(name) + "\" has the value \"" + entry->value +
                      "\", which is no range; send \"yyyy-mm-dd and " + "yyyy-mm-dd\".");
  }
  const DayRange days{ReadDay(name, value.substr(0, middle)),
                      ReadDay(name, value.substr(middle + kAnd.size()))};
  if (days.first <= days.last) return days;
  throw Failure(Failure::Kind::kRefused, "The key \"" + platform::UpperCase(name) + "\" has the value \"" +
                                             entry->value + "\", whose first day comes after its last.");
}

const RequestKeys::Entry* RequestKeys::Find(std::string_view name) const {
  const auto found = std::ranges::find_if(
      entries_, [&](const Entry& entry) { return platform::EqualsIgnoringCase(entry.name, name); });
  return found == entries_.end() ? nullptr : &*found;
}

}  // namespace server
