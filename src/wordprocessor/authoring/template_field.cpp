#include "wordprocessor/authoring/template_field.h"

#include <algorithm>

#include "platform/agreed/field_names.h"

namespace wordprocessor {

std::string FieldNameOf(std::string_view bookmark) {
  const auto repeated = platform::RepeatedName(bookmark);
  return std::string(repeated.empty() ? bookmark : repeated);
}

const TemplateField* FieldFor(std::string_view bookmark, const std::vector<TemplateField>& fields) {
  const auto field = std::ranges::find(fields, FieldNameOf(bookmark), &TemplateField::name);
  return field == fields.end() ? nullptr : &*field;
}

}  // namespace wordprocessor
