#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/value.h"
#include "server/context/field_sources.h"

/// What a letter definition can compute: "divide(AMOUNT_DUE, PERIOD_COUNT)" makes a field from fields that
/// stand above it.
namespace server {

/// What a function is given for one of the fields it names.
struct FunctionArgument {
  std::string field;
  std::string value;  ///< as the data hold it; "" counts as nothing, that is zero or no text
};
using FunctionArguments = std::span<const FunctionArgument>;

struct FieldFunction {
  std::string_view name;
  std::size_t arguments;
  FlagWord state;  ///< of the fields it makes
  /// Throws Failure kRefused with a clause that says why there is no result: a division by zero, an argument
  /// that is no number or day.
  FieldValue (*Call)(FunctionArguments arguments, platform::Date today);
  bool needs_all = false;  ///< nothing that a missing argument could count as
};

/// A function with the fields it is called with.
struct FunctionCall {
  const FieldFunction* function;
  std::vector<std::string> fields;
};

/// For who writes one.
inline constexpr std::string_view kFunctionRule =
    "A FUNCTION is add(A, B), subtract(A, B), divide(A, B), percent(A, B), days_since(A) or join(A, B), of "
    "fields that stand above it.";

/// Nothing where the text is no call of a known function with as many fields as that takes.
std::optional<FunctionCall> ReadFunctionCall(std::string_view text);

}  // namespace server
