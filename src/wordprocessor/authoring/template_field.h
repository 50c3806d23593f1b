#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace wordprocessor {

/// A field that the letters of a template may be filled from.
struct TemplateField {
  enum class Kind : std::uint8_t { kValue, kTable, kColumn, kUser, kParagraph };

  std::string name;
  Kind kind = Kind::kValue;
  std::string table = {};  ///< of a column
  bool asked = true;       ///< whether the officer gives it; false where the letter is not known yet

  bool operator==(const TemplateField&) const = default;
};

/// The name of the field that a bookmark shows: NAME of NAME, NAME__1, NAME__2.
std::string FieldNameOf(std::string_view bookmark);

/// The field that a bookmark shows; nullptr where there is none. Into `fields`.
const TemplateField* FieldFor(std::string_view bookmark, const std::vector<TemplateField>& fields);

}  // namespace wordprocessor
