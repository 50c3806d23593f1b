#include "apps/letters/template_fields.h"

#include "apps/product_files.h"
#include "platform/failure.h"
#include "platform/tab_table.h"
#include "platform/text.h"

namespace apps {
namespace {

using wordprocessor::TemplateField;
using Kind = TemplateField::Kind;

Kind KindOf(const std::string& name) {
  if (name == "TABLE") return Kind::kTable;
  if (name == "COLUMN") return Kind::kColumn;
  if (name == "USER") return Kind::kUser;
  return name == "PARAGRAPH" ? Kind::kParagraph : Kind::kValue;
}

/// "" where the catalogue does not name the template.
std::string LetterTypeOf(const std::string& template_name) {
  const auto catalogue = platform::TabTable::Read(ProductDataFolder() / "reference" / "templates.tsv");
  for (std::size_t row = 0; row < catalogue.RowCount(); ++row) {
    if (platform::EqualsIgnoringCase(catalogue.Text(row, "DCMT_NM"), template_name))
      return catalogue.Text(row, "LTR_TYP_ID");
  }
  return "";
}

}  // namespace

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
    fields.push_back({table.Text(row, "FLD_NM"), KindOf(table.Text(row, "FLD_KIND")),
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
