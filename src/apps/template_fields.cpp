#include "apps/template_fields.h"

#include "apps/product_files.h"
#include "platform/failure.h"
#include "platform/tab_table.h"
#include "platform/text.h"
#include "reference/table_check.h"

namespace apps {
namespace {

using wordprocessor::TemplateField;

TemplateField::Kind KindOf(server::FieldKind kind) {
  switch (kind) {
    case server::FieldKind::kTable:
      return TemplateField::Kind::kTable;
    case server::FieldKind::kColumn:
      return TemplateField::Kind::kColumn;
    case server::FieldKind::kUser:
      return TemplateField::Kind::kUser;
    case server::FieldKind::kParagraph:
      return TemplateField::Kind::kParagraph;
    default:
      return TemplateField::Kind::kValue;
  }
}

/// By its name in the definitions; an unknown one is a value like most.
TemplateField::Kind KindNamed(const std::string& name) {
  return KindOf(server::FindFieldKind(name).value_or(server::FieldKind::kData));
}

/// "" where the catalogue does not name the template.
std::string LetterTypeOf(const std::string& template_name) {
  const auto catalogue = platform::TabTable::Read(reference::TableFile(ProductDataFolder(), "templates.tsv"));
  for (std::size_t row = 0; row < catalogue.RowCount(); ++row) {
    if (platform::EqualsIgnoringCase(catalogue.Text(row, "DCMT_NM"), template_name))
      return catalogue.Text(row, "LTR_TYP_ID");
  }
  return "";
}

}  // namespace

std::vector<TemplateField> AsTemplateFields(const std::vector<server::LetterField>& fields) {
  std::vector<TemplateField> all;
  all.reserve(fields.size());
  for (const auto& field : fields) all.push_back({field.name, KindOf(field.kind), field.parent});
  return all;
}

std::filesystem::path LetterDefinitions() {
  return ProductDataFolder() / "server" / "letter_fields.tsv";
}

std::vector<TemplateField> TemplateFields(const std::filesystem::path& definitions,
                                          const std::string& template_name, std::string letter_type) {
  if (letter_type.empty()) letter_type = LetterTypeOf(template_name);
  const auto table = platform::TabTable::Read(definitions);
  std::vector<TemplateField> fields;
  for (std::size_t row = 0; row < table.RowCount(); ++row) {
    if (!letter_type.empty() && table.Text(row, "LTR_TYP_ID") != letter_type) continue;
    fields.push_back({table.Text(row, "FLD_NM"), KindNamed(table.Text(row, "FLD_KIND")),
                      table.Text(row, "FLD_PARENT"), /*asked=*/!letter_type.empty()});
  }
  if (!letter_type.empty() && fields.empty()) {
    throw platform::Failure(platform::Failure::Kind::kNotFound,
                            "There is no letter type \"" + letter_type + "\" in \"" + definitions.string() +
                                "\". Enter its fields there, or name another type with --type.");
  }
  return fields;
}

}  // namespace apps
