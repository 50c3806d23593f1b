#include "server/context/field_functions.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>

#include "platform/failure.h"
#include "platform/text.h"

namespace server {
namespace {

using platform::Date;
using platform::Failure;
using platform::Money;
using platform::Quoted;

[[noreturn]] void FailFor(const std::string& reason) {
  throw Failure(Failure::Kind::kRefused, reason);
}

/// Cents, or hundredths of a count: a field's raw value is a decimal number either way.
std::int64_t Hundredths(const FunctionArgument& argument) {
  const auto number = Money::Parse(argument.value.empty() ? "0" : argument.value);
  if (!number) FailFor(Quoted(argument.value) + " of " + Quoted(argument.field) + " is no number");
  return number->cents();
}

std::int64_t RoundedQuotient(std::int64_t dividend, std::int64_t divisor) {
  const auto quotient = dividend / divisor;
  const auto rest = std::abs(dividend % divisor);
  if (rest < std::abs(divisor) - rest) return quotient;
  return (dividend < 0) == (divisor < 0) ? quotient + 1 : quotient - 1;
}

/// What comes of the two numbers; `compute` says whether that stays within 64 bits.
template <typename Compute>
std::int64_t Computed(FunctionArguments arguments, Compute compute) {
  std::int64_t result = 0;
  if (!compute(Hundredths(arguments[0]), Hundredths(arguments[1]), &result))
    FailFor("the result is too large");
  return result;
}

FieldValue AsAmount(std::int64_t cents) {
  return AmountValue(Money::FromCents(cents));
}

/// Hundredths of the two numbers' quotient, `parts` times.
std::int64_t Quotient(FunctionArguments arguments, std::int64_t parts) {
  if (Hundredths(arguments[1]) == 0)
    FailFor(Quoted(arguments[1].field) + " is zero, and nothing can be divided by zero");
  return Computed(arguments, [parts](std::int64_t dividend, std::int64_t divisor, std::int64_t* result) {
    if (__builtin_mul_overflow(dividend, 100 * parts, &dividend)) return false;
    *result = RoundedQuotient(dividend, divisor);
    return true;
  });
}

FieldValue Percent(FunctionArguments arguments, Date /*today*/) {
  const auto share = Quotient(arguments, 100);
  const auto text = Money::FromCents(share).AsText();
  const bool whole = text.ends_with(".00");
  return FieldValue{.text = (whole ? text.substr(0, text.size() - 3) : text) + " percent",
                    .raw = text,
                    .is_zero = share == 0};
}

FieldValue DaysSince(FunctionArguments arguments, Date today) {
  const auto day = platform::ParseDate(arguments[0].value);
  if (!day) FailFor(Quoted(arguments[0].value) + " of " + Quoted(arguments[0].field) + " is no day");
  const auto count = std::to_string((std::chrono::sys_days(today) - std::chrono::sys_days(*day)).count());
  return FieldValue{.text = count, .raw = count, .is_zero = count == "0"};
}

FieldValue Join(FunctionArguments arguments, Date /*today*/) {
  const auto text = std::string(platform::Trim(arguments[0].value + " " + arguments[1].value));
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
     [](FunctionArguments arguments, Date) { return AsAmount(Quotient(arguments, 1)); }},
    {"percent", 2, kComputed, Percent},
    {"days_since", 1, kComputed | state::kVolatile, DaysSince, /*needs_all=*/true},
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
