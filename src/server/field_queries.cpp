#include "server/field_queries.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <optional>
#include <utility>
#include <vector>

#include "platform/failure.h"
#include "platform/text.h"
#include "server/letter_text.h"

namespace server {
namespace {

using platform::Value;

struct Parameter {
  std::string_view name;
  Value (*Of)(const LetterSubject& subject);
};

constexpr auto kParameters = std::to_array<Parameter>({
    {"customer", [](const LetterSubject& s) { return Value(s.customer.id); }},
    {"form_type", [](const LetterSubject& s) { return s.form ? Value(s.form->type) : Value(); }},
    {"form_number", [](const LetterSubject& s) { return s.form ? Value(s.form->number) : Value(); }},
    {"today", [](const LetterSubject& s) { return Value(platform::DateText(s.today)); }},
});

/// A statement with question marks where it had parameters, and those in their order.
struct Bound {
  std::string statement;
  std::vector<const Parameter*> parameters;
};

/// Nothing where a parameter is none.
std::optional<Bound> Bind(std::string_view statement) {
  const auto part_of_name = [](char c) { return (c >= 'a' && c <= 'z') || c == '_'; };
  Bound bound;
  bool quoted = false;
  for (std::size_t place = 0; place < statement.size(); ++place) {
    if (statement[place] == '\'') quoted = !quoted;
    if (statement[place] != ':' || quoted) {
      bound.statement += statement[place];
      continue;
    }
    const auto rest = statement.substr(place + 1);
    const auto end = std::ranges::find_if_not(rest, part_of_name);
    const std::string_view name(rest.begin(), end);
    const auto known = std::ranges::find(kParameters, name, &Parameter::name);
    if (known == kParameters.end()) return std::nullopt;
    bound.parameters.push_back(&*known);
    bound.statement += '?';
    place += name.size();
  }
  return bound;
}

FieldFinding Amount(const Value& value) {
  try {
    return {.value = AmountValue(platform::Money::FromCents(value.AsInteger()))};
  } catch (const platform::Failure&) {
    return {.error = error::kPopulateValue};
  }
}

FieldFinding Day(const std::string& text) {
  const auto day = platform::ParseDate(text);
  if (!day) return {.error = error::kPopulateValue};
  return {.value = {.text = DateInLetter(*day), .raw = text}};
}

FieldFinding AsField(const Value& value, FieldRules rules) {
  if (value.IsNull()) return {.value = {.text = "", .raw = "", .is_null = true}};
  const auto text = std::string(platform::Trim(value.AsText()));
  if (text.empty()) return {};
  if ((rules & rule::kAmount) != 0) return Amount(value);
  if ((rules & rule::kDay) != 0) return Day(text);
  return {.value = {.text = text, .raw = text, .is_zero = text == "0"}};
}

}  // namespace

bool IsFieldQuery(std::string_view statement) {
  return statement.starts_with("SELECT ") && statement.find(';') == std::string_view::npos && Bind(statement);
}

FieldFinding RunFieldQuery(Database& database, const std::string& statement, FieldRules rules,
                           const LetterSubject& subject) {
  const auto bound = Bind(statement);
  if (!bound) return {.error = error::kExecuteQuery};
  std::vector<Value> values;
  for (const auto* parameter : bound->parameters) values.push_back(parameter->Of(subject));
  try {
    const auto rows = database.Select(bound->statement, values);
    if (rows->IsEmpty()) return {.value = {.text = "", .raw = "", .found = false}};
    return AsField(rows->Get(0, rows->columns().front()), rules);
  } catch (const platform::Failure&) {
    // The letter is not refused as a whole: its error list names the field, beside whatever else is wrong.
    return {.error = error::kExecuteQuery};
  }
}

}  // namespace server
