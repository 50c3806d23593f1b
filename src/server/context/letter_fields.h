#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "server/storage/database.h"
#include "server/subject/field_rules.h"

namespace server {

/// The table of fields, as an author knows it.
inline constexpr std::string_view kDefinitionFile = "letter_fields.tsv";

enum class FieldKind { kSystem, kData, kTable, kColumn, kUser, kParagraph, kQuery, kFunction, kLocal };

/// By the name that letter definitions use; nothing for any other.
std::optional<FieldKind> FindFieldKind(std::string_view name);
/// Why a field of that kind cannot come from `source`, in words for who writes a letter definition; "" where
/// it can.
std::string SourceFault(FieldKind kind, const std::string& source);

/// One field of a letter type: an element of its data context.
struct LetterField {
  std::string name;
  std::string parent;  ///< the table field that a column belongs to; "" for everything else
  std::string description;
  FieldKind kind = FieldKind::kData;
  /// Of a DATA or SYSTEM field, a TABLE or COLUMN: see field_sources.h. Of a QUERY the statement, of a
  /// FUNCTION the call, of a LOCAL the value itself; "" for what the user supplies.
  std::string source;
  bool required = false;          ///< the letter needs it: found, not empty, not zero
  bool ignored_without = false;   ///< without it there is nothing to write the letter about
  std::string default_text = {};  ///< stands where there is no value
  FieldRules rules = 0;
  std::int64_t line = 0;   ///< in kDefinitionFile; 0 where that is not known
  std::string group = {};  ///< of paragraphs of which the letter needs at least one; "" for everything else
};

/// What the letter asks of the address it goes to: bits of rule::kOfAddress.
FieldRules AddressRules(const std::vector<LetterField>& fields);

/// The fields of a letter type in their order; empty where there is no such letter type. Throws Failure
/// kRefused for a definition that a newer program has stored.
std::vector<LetterField> FindLetterFields(Database& database, const std::string& letter_type);

}  // namespace server
