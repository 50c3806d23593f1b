#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "server/database.h"

namespace server {

enum class FieldKind { kSystem, kData, kTable, kColumn, kUser, kParagraph };

/// One field of a letter type: an element of its data context.
struct LetterField {
  std::string name;
  std::string parent;  ///< the table field that a column belongs to; "" for everything else
  std::string description;
  FieldKind kind = FieldKind::kData;
  std::string source;     ///< see field_sources.h; "" for what the user supplies
  bool required = false;  ///< must not be empty
};

/// The fields of a letter type in their order; empty where there is no such letter type. Throws Failure
/// kRefused for a definition that a newer program has stored.
std::vector<LetterField> FindLetterFields(Database& database, const std::string& letter_type);

/// Replaces all letter definitions by those of the file, within the caller's transaction. Throws Failure
/// kDamaged naming file, line and column for an unknown kind or source, a column without its table, a name
/// that no element can have, or one that comes twice.
void StoreLetterFields(Database& database, const std::filesystem::path& file);

}  // namespace server
