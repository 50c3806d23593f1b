#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "server/field_sources.h"

namespace server {

/// What a field made by the server comes to: its value, or why it has none.
struct FieldFinding {
  FieldValue value = {};
  FlagWord error = 0;
};

/// Whether a letter definition may hold it: one SELECT, about the letter's own subject.
bool IsFieldQuery(std::string_view statement);

/// The first column of the statement's first row. `:customer`, `:form_type`, `:form_number` and `:today`
/// stand for what the letter is about. A statement that fails, or a value that is no amount or day where the
/// rules say so, is an error of that field alone.
FieldFinding RunFieldQuery(Database& database, const std::string& statement, FieldRules rules,
                           const LetterSubject& subject);

}  // namespace server
