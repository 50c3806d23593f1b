#pragma once

#include <chrono>
#include <compare>
#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace platform {

/// A local calendar day.
using Date = std::chrono::year_month_day;
/// Local time of day with the day, to the second.
using Timestamp = std::chrono::local_seconds;

/// "yyyy-mm-dd".
std::string DateText(Date date);
/// "yyyy-mm-dd hh.mm.ss".
std::string TimestampText(Timestamp time);
/// Reads "yyyy-mm-dd"; nothing where the text is no such day (2023-02-29 is none).
std::optional<Date> ParseDate(std::string_view text);
/// Reads "yyyy-mm-dd hh.mm.ss" (":" and "T" are taken as well); nothing where the text is no such time.
std::optional<Timestamp> ParseTimestamp(std::string_view text);

/// An amount of money: exact, in cents. Never floating point.
class Money {
 public:
  static constexpr Money FromCents(std::int64_t cents) { return Money(cents); }
  /// Reads "-1045.50", "1045.5" or "1045"; nothing for anything else, more than two decimals included.
  static std::optional<Money> Parse(std::string_view text);

  constexpr std::int64_t cents() const { return cents_; }
  /// "1045.50": a point, two decimals, no grouping.
  std::string AsText() const;
  /// "1,045.50": as a letter writes it.
  std::string AsGroupedText() const;

  /// Throws Failure kRefused when the sum leaves the range of 64 bits.
  Money operator+(Money other) const;
  auto operator<=>(const Money&) const = default;

 private:
  constexpr explicit Money(std::int64_t cents) : cents_(cents) {}
  std::int64_t cents_;
};

/// One cell of a record set: null, text, integer, money, date or timestamp.
class Value {
 public:
  Value() = default;
  Value(std::string text) : held_(std::move(text)) {}         // NOLINT: a cell is assigned from what it holds
  Value(std::string_view text) : held_(std::string(text)) {}  // NOLINT
  Value(const char* text) : held_(std::string(text)) {}       // NOLINT
  Value(std::integral auto number) : held_(static_cast<std::int64_t>(number)) {}  // NOLINT
  Value(Money amount) : held_(amount) {}                                          // NOLINT
  Value(Date date) : held_(date) {}                                               // NOLINT
  Value(Timestamp time) : held_(time) {}                                          // NOLINT
  static Value Null() { return {}; }

  bool IsNull() const { return std::holds_alternative<std::monostate>(held_); }
  /// The value as text; "" for null.
  std::string AsText() const;
  /// The value as an integer, also from a text of decimal digits with an optional sign and blanks around it.
  /// Throws Failure kRefused for anything else, null included.
  std::int64_t AsInteger() const;

  /// The variant itself, for code that stores or sends values by their kind.
  const auto& held() const { return held_; }

  /// Nulls first; texts without regard to case; numbers, money, dates and times by size; across kinds by
  /// text.
  static std::weak_ordering Compare(const Value& left, const Value& right);
  /// The same kind holding the same thing (texts to the letter).
  bool operator==(const Value&) const = default;

 private:
  std::variant<std::monostate, std::string, std::int64_t, Money, Date, Timestamp> held_;
};

}  // namespace platform
