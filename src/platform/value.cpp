#include "platform/value.h"

#include <charconv>
#include <limits>
#include <system_error>

#include "platform/failure.h"
#include "platform/text.h"

namespace platform {
namespace {

using std::chrono::days;
using std::chrono::local_days;

bool IsDigit(char character) {
  return character >= '0' && character <= '9';
}

/// Exactly `digits` decimal digits at the start of `text`, which moves past them.
std::optional<int> TakeDigits(std::string_view& text, std::size_t digits) {
  if (text.size() < digits) return std::nullopt;
  int number = 0;
  for (const char character : text.substr(0, digits)) {
    if (!IsDigit(character)) return std::nullopt;
    number = number * 10 + (character - '0');
  }
  text.remove_prefix(digits);
  return number;
}

/// One of `characters` at the start of `text`, which moves past it.
bool TakeOneOf(std::string_view& text, std::string_view characters) {
  if (text.empty() || characters.find(text.front()) == std::string_view::npos) return false;
  text.remove_prefix(1);
  return true;
}

std::optional<Date> TakeDate(std::string_view& text) {
  const auto year = TakeDigits(text, 4);
  if (!year || !TakeOneOf(text, "-")) return std::nullopt;
  const auto month = TakeDigits(text, 2);
  if (!month || !TakeOneOf(text, "-")) return std::nullopt;
  const auto day = TakeDigits(text, 2);
  if (!day) return std::nullopt;
  const Date date(std::chrono::year(*year), std::chrono::month(static_cast<unsigned>(*month)),
                  std::chrono::day(static_cast<unsigned>(*day)));
  if (!date.ok() || *year == 0) return std::nullopt;
  return date;
}

std::optional<int> TakeTimePart(std::string_view& text, int below) {
  const auto part = TakeDigits(text, 2);
  return part && *part < below ? part : std::nullopt;
}

std::string Padded(long long number, std::size_t width) {
  const auto digits = std::to_string(number);
  return digits.size() < width ? std::string(width - digits.size(), '0') + digits : digits;
}

std::uint64_t Magnitude(std::int64_t number) {
  return number < 0 ? 0 - static_cast<std::uint64_t>(number) : static_cast<std::uint64_t>(number);
}

std::string Grouped(std::string digits) {
  for (auto end = static_cast<std::ptrdiff_t>(digits.size()) - 3; end > 0; end -= 3) {
    digits.insert(static_cast<std::size_t>(end), ",");
  }
  return digits;
}

std::string MoneyText(std::int64_t cents, const std::string& dollars) {
  return (cents < 0 ? "-" : "") + dollars + "." + Padded(static_cast<long long>(Magnitude(cents) % 100), 2);
}

template <typename Held>
std::string HeldText(const Held& held) {
  if constexpr (std::is_same_v<Held, std::monostate>) return {};
  if constexpr (std::is_same_v<Held, std::string>) return held;
  if constexpr (std::is_same_v<Held, std::int64_t>) return std::to_string(held);
  if constexpr (std::is_same_v<Held, Money>) return held.AsText();
  if constexpr (std::is_same_v<Held, Date>) return DateText(held);
  if constexpr (std::is_same_v<Held, Timestamp>) return TimestampText(held);
}

template <typename Held>
std::weak_ordering CompareHeld(const Held& left, const Held& right) {
  if constexpr (std::is_same_v<Held, std::string>) {
    return CompareIgnoringCase(left, right);
  } else {
    return left <=> right;
  }
}

std::optional<std::int64_t> ParseInteger(std::string_view text) {
  text = Trim(text);
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

}  // namespace

std::string DateText(Date date) {
  return Padded(static_cast<int>(date.year()), 4) + "-" + Padded(static_cast<unsigned>(date.month()), 2) +
         "-" + Padded(static_cast<unsigned>(date.day()), 2);
}

std::string TimestampText(Timestamp time) {
  const auto day = std::chrono::floor<days>(time);
  const std::chrono::hh_mm_ss<std::chrono::seconds> clock(time - day);
  return DateText(Date(day)) + " " + Padded(clock.hours().count(), 2) + "." +
         Padded(clock.minutes().count(), 2) + "." + Padded(clock.seconds().count(), 2);
}

std::optional<Date> ParseDate(std::string_view text) {
  const auto date = TakeDate(text);
  return text.empty() ? date : std::nullopt;
}

std::optional<Timestamp> ParseTimestamp(std::string_view text) {
  const auto date = TakeDate(text);
  if (!date || !TakeOneOf(text, " T")) return std::nullopt;
  const auto hours = TakeTimePart(text, 24);
  if (!hours || !TakeOneOf(text, ".:")) return std::nullopt;
  const auto minutes = TakeTimePart(text, 60);
  if (!minutes || !TakeOneOf(text, ".:")) return std::nullopt;
  const auto seconds = TakeTimePart(text, 60);
  if (!seconds || !text.empty()) return std::nullopt;
  return local_days(*date) + std::chrono::hours(*hours) + std::chrono::minutes(*minutes) +
         std::chrono::seconds(*seconds);
}

std::optional<Money> Money::Parse(std::string_view text) {
  const bool negative = TakeOneOf(text, "-");
  const auto point = text.find('.');
  const auto dollars = text.substr(0, point);
  const auto decimals = point == std::string_view::npos ? "0" : text.substr(point + 1);
  if (dollars.empty() || decimals.empty() || decimals.size() > 2) return std::nullopt;

  // Summed up below zero, where the range is larger by one cent.
  std::int64_t cents = 0;
  const auto take = [&cents](char digit) {
    return IsDigit(digit) && !__builtin_mul_overflow(cents, 10, &cents) &&
           !__builtin_sub_overflow(cents, digit - '0', &cents);
  };
  for (const char digit : dollars) {
    if (!take(digit)) return std::nullopt;
  }
  if (!take(decimals[0]) || !take(decimals.size() == 2 ? decimals[1] : '0')) return std::nullopt;
  if (negative) return Money(cents);
  if (cents == std::numeric_limits<std::int64_t>::min()) return std::nullopt;
  return Money(-cents);
}

std::string Money::AsText() const {
  return MoneyText(cents_, std::to_string(Magnitude(cents_) / 100));
}

std::string Money::AsGroupedText() const {
  return MoneyText(cents_, Grouped(std::to_string(Magnitude(cents_) / 100)));
}

Money Money::operator+(Money other) const {
  std::int64_t sum = 0;
  if (__builtin_add_overflow(cents_, other.cents_, &sum)) {
    throw Failure(Failure::Kind::kRefused, "The sum of \"" + AsText() + "\" and \"" + other.AsText() +
                                               "\" is too large to be kept. Check the two amounts.");
  }
  return Money(sum);
}

std::string Value::AsText() const {
  return std::visit([](const auto& held) { return HeldText(held); }, held_);
}

std::int64_t Value::AsInteger() const {
  if (const auto* number = std::get_if<std::int64_t>(&held_)) return *number;
  if (const auto* text = std::get_if<std::string>(&held_)) {
    if (const auto number = ParseInteger(*text)) return *number;
  }
  throw Failure(Failure::Kind::kRefused, "\"" + AsText() + "\" is no whole number. Use decimal digits only.");
}

std::weak_ordering Value::Compare(const Value& left, const Value& right) {
  if (left.IsNull() || right.IsNull()) return right.IsNull() <=> left.IsNull();
  if (left.held_.index() != right.held_.index()) return CompareIgnoringCase(left.AsText(), right.AsText());
  return std::visit(
      [&right]<typename Held>(const Held& held) { return CompareHeld(held, std::get<Held>(right.held_)); },
      left.held_);
}

}  // namespace platform
