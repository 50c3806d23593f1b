#include "server/field_functions.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>

#include "platform/text.h"

namespace server {
namespace {

using platform::Date;
using platform::Money;
using Result = std::optional<FieldValue>;

/// Cents, or hundredths of a count: a field's raw value is a decimal number either way.
std::optional<std::int64_t> Hundredths(const std::string& raw) {
  const auto number = Money::Parse(raw.empty() ? "0" : raw);
  return number ? std::optional(number->cents()) : std::nullopt;
}

std::int64_t RoundedQuotient(std::int64_t dividend, std::int64_t divisor) {
  const auto quotient = dividend / divisor;
  const auto rest = std::abs(dividend % divisor);
  if (rest < std::abs(divisor) - rest) return quotient;
  return (dividend < 0) == (divisor < 0) ? quotient + 1 : quotient - 1;
}

/// The result of the two numbers, where both are numbers and the computation stays within 64 bits.
template <typename Compute>
std::optional<std::int64_t> Computed(FunctionArguments arguments, Compute compute) {
  const auto left = Hundredths(arguments[0]);
  const auto right = Hundredths(arguments[1]);
  std::int64_t result = 0;
  if (!left || !right || !compute(*left, *right, &result)) return std::nullopt;
  return result;
}

Result AsAmount(std::optional<std::int64_t> cents) {
  return cents ? Result(AmountValue(Money::FromCents(*cents))) : std::nullopt;
}

bool Quotient(std::int64_t dividend, std::int64_t divisor, std::int64_t* result) {
  if (divisor == 0 || __builtin_mul_overflow(dividend, 100, &dividend)) return false;
  *result = RoundedQuotient(dividend, divisor);
  return true;
}

Result Percent(FunctionArguments arguments, Date /*today*/) {
  const auto share = Computed(arguments, [](std::int64_t part, std::int64_t whole, std::int64_t* result) {
    return !__builtin_mul_overflow(part, 100, &part) && Quotient(part, whole, result);
  });
  if (!share) return std::nullopt;
  const auto text = Money::FromCents(*share).AsText();
  const bool whole = text.ends_with(".00");
  return FieldValue{.text = (whole ? text.substr(0, text.size() - 3) : text) + " percent",
                    .raw = text,
                    .is_zero = *share == 0};
}

Result DaysSince(FunctionArguments arguments, Date today) {
  const auto day = platform::ParseDate(arguments[0]);
  if (!day) return std::nullopt;
  const auto count = std::to_string((std::chrono::sys_days(today) - std::chrono::sys_days(*day)).count());
  return FieldValue{.text = count, .raw = count, .is_zero = count == "0"};
}

Result Join(FunctionArguments arguments, Date /*today*/) {
  const auto text = std::string(platform::Trim(arguments[0] + " " + arguments[1]));
  return FieldValue{.text = text, .raw = text};
}

constexpr FlagWord kComputed = state::kNotFromData | state::kHasFunction;

constexpr auto kFunctions = std::to_array<FieldFunction>({
    {"add", 2, kComputed,
     [](FunctionArguments arguments, Date) {
       return AsAmount(Computed(arguments, [](auto left, auto right, auto* sum) {
         return !__builtin_add_overflow(left, right, sum);
       }));
     }},
    {"subtract", 2, kComputed,
     [](FunctionArguments arguments, Date) {
       return AsAmount(Computed(arguments, [](auto left, auto right, auto* rest) {
         return !__builtin_sub_overflow(left, right, rest);
       }));
     }},
    {"divide", 2, kComputed,
     [](FunctionArguments arguments, Date) { return AsAmount(Computed(arguments, Quotient)); }},
    {"percent", 2, kComputed, Percent},
    {"days_since", 1, kComputed | state::kVolatile, DaysSince},
    {"join", 2, kComputed, Join},
});

}  // namespace

std::optional<FunctionCall> ReadFunctionCall(std::string_view text) {
  const auto open = text.find('(');
  if (open == std::string_view::npos || !text.ends_with(')')) return std::nullopt;
  const auto known = std::ranges::find(kFunctions, text.substr(0, open), &FieldFunction::name);
  if (known == kFunctions.end()) return std::nullopt;
  FunctionCall call{.function = &*known, .fields = {}};
  auto list = text.substr(open + 1, text.size() - open - 2);
  for (;;) {
    const auto comma = list.find(',');
    call.fields.emplace_back(platform::Trim(list.substr(0, comma)));
    if (comma == std::string_view::npos) break;
    list.remove_prefix(comma + 1);
  }
  return call.fields.size() == known->arguments ? std::optional(std::move(call)) : std::nullopt;
}

}  // namespace server
