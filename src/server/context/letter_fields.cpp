#include "server/context/letter_fields.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "platform/failure.h"
#include "server/context/field_functions.h"
#include "server/context/field_queries.h"
#include "server/context/field_sources.h"

namespace server {
namespace {

struct KindName {
  std::string_view name;
  FieldKind kind;
};

constexpr auto kKindNames = std::to_array<KindName>({
    {"SYSTEM", FieldKind::kSystem},
    {"DATA", FieldKind::kData},
    {"TABLE", FieldKind::kTable},
    {"COLUMN", FieldKind::kColumn},
    {"USER", FieldKind::kUser},
    {"PARAGRAPH", FieldKind::kParagraph},
    {"QUERY", FieldKind::kQuery},
    {"FUNCTION", FieldKind::kFunction},
    {"LOCAL", FieldKind::kLocal},
});

void RequireKnown(const platform::RecordSet& rows, std::size_t row) {
  const auto kind = FindFieldKind(rows.Text(row, "FLD_KIND"));
  const auto field = "The field \"" + rows.Text(row, "FLD_NM") + "\" of letter type \"" +
                     rows.Text(row, "LTR_TYP_ID") + "\"";
  if (!kind || !ReadRules(rows.Text(row, "FLD_RULE"))) {
    throw platform::Failure(
        platform::Failure::Kind::kRefused,
        field + " is of a kind this program does not know. Use the program that made the data.");
  }
  const auto& source = rows.Text(row, "FLD_SRC");
  if (const auto fault = SourceFault(*kind, source); !fault.empty()) {
    throw platform::Failure(
        platform::Failure::Kind::kRefused,
        field + ", of kind \"" + rows.Text(row, "FLD_KIND") + "\", cannot come from \"" + source + "\". " +
            fault + " Correct it in the letter definitions, or use the program that made the data.");
  }
}

}  // namespace

std::optional<FieldKind> FindFieldKind(std::string_view name) {
  const auto found = std::ranges::find(kKindNames, name, &KindName::name);
  return found == kKindNames.end() ? std::nullopt : std::optional(found->kind);
}

std::string SourceFault(FieldKind kind, const std::string& source) {
  switch (kind) {
    case FieldKind::kSystem:
    case FieldKind::kData:
      return FindFieldSource(source) != nullptr ? "" : "There is " + FieldSourceNames() + ".";
    case FieldKind::kTable:
      return source == kPeriodsSource ? "" : "There is " + std::string(kPeriodsSource) + ".";
    case FieldKind::kColumn:
      return FindPeriodSource(source) != nullptr ? "" : "There is " + PeriodSourceNames() + ".";
    case FieldKind::kQuery:
      return FieldQueryFault(source);
    case FieldKind::kFunction:
      return ReadFunctionCall(source) ? "" : std::string(kFunctionRule);
    case FieldKind::kLocal:
      return source.empty() ? "A LOCAL is the text that stands here." : "";
    case FieldKind::kUser:
    case FieldKind::kParagraph:
      break;
  }
  return source.empty() ? "" : "It comes from the officer; leave this empty.";
}

FieldRules AddressRules(const std::vector<LetterField>& fields) {
  FieldRules rules = 0;
  for (const auto& field : fields) rules |= field.rules & rule::kOfAddress;
  return rules;
}

std::vector<LetterField> FindLetterFields(Database& database, const std::string& letter_type) {
  const auto rows =
      database.Select("SELECT * FROM letter_field WHERE LTR_TYP_ID = ? ORDER BY FLD_ORD", {letter_type});
  // Not yet, while older data are being carried over.
  const bool has_lines = rows->HasColumn("FLD_LINE");
  std::vector<LetterField> fields;
  for (std::size_t row = 0; row < rows->RecordCount(); ++row) {
    RequireKnown(*rows, row);
    fields.push_back({.name = rows->Text(row, "FLD_NM"),
                      .parent = rows->Text(row, "FLD_PARENT"),
                      .description = rows->Text(row, "FLD_DES"),
                      .kind = FindFieldKind(rows->Text(row, "FLD_KIND")).value(),
                      .source = rows->Text(row, "FLD_SRC"),
                      .required = rows->Text(row, "FLD_REQ") == "Y",
                      .ignored_without = rows->Text(row, "FLD_REQ") == "I",
                      .default_text = rows->Text(row, "FLD_DFLT"),
                      .rules = ReadRules(rows->Text(row, "FLD_RULE")).value(),
                      .line = has_lines ? rows->Get(row, "FLD_LINE").AsInteger() : 0,
                      .group = ParagraphGroup(rows->Text(row, "FLD_RULE"))});
  }
  return fields;
}

}  // namespace server
