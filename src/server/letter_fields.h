#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "server/database.h"
#include "server/field_rules.h"

namespace server {

enum class FieldKind { kSystem, kData, kTable, kColumn, kUser, kParagraph, kQuery, kFunction, kLocal };

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
  std::int64_t line = 0;   ///< in the file it was read from; 0 where that is not known
  std::string group = {};  ///< of paragraphs of which the letter needs at least one; "" for everything else
};

/// What the letter asks of the address it goes to: bits of rule::kOfAddress.
FieldRules AddressRules(const std::vector<LetterField>& fields);

/// The fields of a letter type in their order; empty where there is no such letter type. Throws Failure
/// kRefused for a definition that a newer program has stored.
std::vector<LetterField> FindLetterFields(Database& database, const std::string& letter_type);

/// Replaces all letter definitions by those of the file, within the caller's transaction. Throws Failure
/// kDamaged naming file, line and column for an unknown kind, source or rule, a column without its table, a
/// function of fields that do not stand above it, a name that no element can have, or one that comes twice.
void StoreLetterFields(Database& database, const std::filesystem::path& file);

}  // namespace server
