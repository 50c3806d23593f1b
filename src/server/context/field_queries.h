#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "server/context/field_sources.h"

namespace server {

/// What a field made by the server comes to: its value, or why it has none.
struct FieldFinding {
  FieldValue value = {};
  FlagWord error = 0;
  std::string reason = {};  ///< of an error, a clause; "" where the error says it all
};

/// Why a letter definition may not hold the statement; "" for one SELECT (or WITH ... SELECT) about the
/// letter's own subject. One that begins like that and does more than read fails when it runs. Decision
/// [query-time].
std::string FieldQueryFault(std::string_view statement);

/// What the queries of one letter may take together, from now on. The server answers one request after the
/// other: others wait no longer than this for a query that does not end.
ReadingLimits FieldQueryLimits(std::stop_token ending);

/// The first column of the statement's first row. `:customer`, `:form_type`, `:form_number` and `:today`
/// stand for what the letter is about. A statement that fails or goes past `limits`, or a value that no
/// letter can hold or that is no amount or day where the rules say so, is an error of that field alone.
FieldFinding RunFieldQuery(Database& database, const std::string& statement, FieldRules rules,
                           const LetterSubject& subject, const ReadingLimits& limits);

/// Runs a statement once about nobody: whatever it is told of customers and documents is nothing. Returns why
/// it fails, a clause; "" where it does not, which says nothing of what it does with a customer's data.
std::string TryFieldQuery(Database& database, const std::string& statement, platform::Date today);

}  // namespace server
