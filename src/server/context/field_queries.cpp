#include "server/context/field_queries.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <optional>
#include <utility>
#include <vector>

#include "platform/failure.h"
#include "platform/text.h"
#include "platform/xml/xml_characters.h"
#include "server/subject/letter_text.h"

namespace server {
namespace {

using platform::Failure;
using platform::Value;

// A query of a letter takes milliseconds.
constexpr std::chrono::seconds kTimeOfALetter(2);

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

constexpr std::string_view kRule =
    "A QUERY is one SELECT, or WITH ... SELECT, that only reads, without \";\"; it may ask for :customer, "
    ":form_type, :form_number and :today.";

/// A statement with question marks where it had parameters, and those in their order.
struct Bound {
  std::string statement;
  std::vector<const Parameter*> parameters;
  std::string unknown = {};  ///< a name that is no parameter's; the statement ends there
};

Bound Bind(std::string_view statement) {
  const auto part_of_name = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
  };
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
    if (known == kParameters.end()) {
      bound.unknown = ":" + std::string(name);
      return bound;
    }
    bound.parameters.push_back(&*known);
    bound.statement += '?';
    place += name.size();
  }
  return bound;
}

FieldFinding NoValue(std::string reason) {
  return {.error = error::kPopulateValue, .reason = std::move(reason)};
}

FieldFinding Amount(const Value& value) {
  try {
    return {.value = AmountValue(platform::Money::FromCents(value.AsInteger()))};
  } catch (const Failure&) {
    return NoValue("\"" + value.AsText() + "\" is no amount in cents");
  }
}

FieldFinding Day(const std::string& text) {
  const auto day = platform::ParseDate(text);
  if (!day) return NoValue("\"" + text + "\" is no day (yyyy-mm-dd)");
  return {.value = {.text = DateInLetter(*day), .raw = text}};
}

FieldFinding AsField(const Value& value, FieldRules rules) {
  if (value.IsNull()) return {.value = {.text = "", .raw = "", .is_null = true}};
  const auto text = std::string(platform::Trim(value.AsText()));
  if (text.empty()) return {};
  // One field must not make the whole letter impossible to write down.
  if (platform::XmlCharactersLength(text) != text.size()) return NoValue("it holds characters no letter can");
  if ((rules & rule::kAmount) != 0) return Amount(value);
  if ((rules & rule::kDay) != 0) return Day(text);
  return {.value = {.text = text, .raw = text, .is_zero = text == "0"}};
}

std::string WhyNot(const Failure& failure, const ReadingLimits& limits) {
  if (failure.kind() != Failure::Kind::kTimedOut) return failure.description();
  if (limits.ending.stop_requested()) return "the server is being ended";
  return "it was stopped because the queries of a letter may take " + std::to_string(kTimeOfALetter.count()) +
         " seconds together";
}

}  // namespace

std::string FieldQueryFault(std::string_view statement) {
  const auto first_word = statement.substr(0, statement.find_first_of(" \n\t("));
  const bool asks =
      platform::EqualsIgnoringCase(first_word, "SELECT") || platform::EqualsIgnoringCase(first_word, "WITH");
  const auto unknown = Bind(statement).unknown;
  if (asks && unknown.empty() && statement.find(';') == std::string_view::npos) return "";
  return (unknown.empty() ? "" : platform::Quoted(unknown) + " stands for nothing. ") + std::string(kRule);
}

ReadingLimits FieldQueryLimits(std::stop_token ending) {
  return {.until = std::chrono::steady_clock::now() + kTimeOfALetter, .ending = std::move(ending)};
}

FieldFinding RunFieldQuery(Database& database, const std::string& statement, FieldRules rules,
                           const LetterSubject& subject, const ReadingLimits& limits) {
  const auto bound = Bind(statement);
  std::vector<Value> values;
  for (const auto* parameter : bound.parameters) values.push_back(parameter->Of(subject));
  try {
    const auto value = database.SelectOne(bound.statement, values, limits);
    return value ? AsField(*value, rules) : FieldFinding{.value = {.text = "", .raw = "", .found = false}};
  } catch (const Failure& failure) {
    // The letter is not refused as a whole: its error list names the field, beside whatever else is wrong.
    return {.error = error::kExecuteQuery, .reason = WhyNot(failure, limits)};
  }
}

std::string TryFieldQuery(Database& database, const std::string& statement, platform::Date today) {
  LetterSubject nobody;
  nobody.today = today;
  const auto finding = RunFieldQuery(database, statement, 0, nobody, FieldQueryLimits({}));
  return finding.error == error::kExecuteQuery ? finding.reason : "";
}

}  // namespace server
