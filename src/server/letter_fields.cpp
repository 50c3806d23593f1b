#include "server/letter_fields.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <string_view>

#include "platform/failure.h"
#include "server/field_functions.h"
#include "server/field_queries.h"
#include "server/field_sources.h"
#include "server/tab_table.h"

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

// Needed, not needed, and needed for there to be a letter at all ("I": else it is ignored).
constexpr auto kNeeds = std::to_array<std::string_view>({"Y", "N", "I"});

std::optional<FieldKind> FindKind(std::string_view name) {
  const auto found = std::ranges::find(kKindNames, name, &KindName::name);
  return found == kKindNames.end() ? std::nullopt : std::optional(found->kind);
}

bool IsKnownSource(FieldKind kind, const std::string& source) {
  switch (kind) {
    case FieldKind::kSystem:
    case FieldKind::kData:
      return FindFieldSource(source) != nullptr;
    case FieldKind::kTable:
      return source == kPeriodsSource;
    case FieldKind::kColumn:
      return FindPeriodSource(source) != nullptr;
    case FieldKind::kQuery:
      return IsFieldQuery(source);
    case FieldKind::kFunction:
      return ReadFunctionCall(source).has_value();
    case FieldKind::kLocal:
      return !source.empty();
    case FieldKind::kUser:
    case FieldKind::kParagraph:
      break;
  }
  return source.empty();
}

/// What is said of a source that the field cannot come from.
std::string SourceFault(FieldKind kind, const std::string& subject, const std::string& source) {
  const auto fault = subject + " cannot come from \"" + source + "\".";
  return kind == FieldKind::kQuery ? fault + " " + std::string(kFieldQueryRule) : fault;
}

void RequireKnown(const platform::RecordSet& rows, std::size_t row) {
  const auto kind = FindKind(rows.Text(row, "FLD_KIND"));
  const auto field = "The field \"" + rows.Text(row, "FLD_NM") + "\" of letter type \"" +
                     rows.Text(row, "LTR_TYP_ID") + "\"";
  if (!kind || !ReadRules(rows.Text(row, "FLD_RULE"))) {
    throw platform::Failure(
        platform::Failure::Kind::kRefused,
        field + " is of a kind this program does not know. Use the program that made the data.");
  }
  if (IsKnownSource(*kind, rows.Text(row, "FLD_SRC"))) return;
  throw platform::Failure(
      platform::Failure::Kind::kRefused,
      SourceFault(*kind, field + ", of kind \"" + rows.Text(row, "FLD_KIND") + "\",",
                  rows.Text(row, "FLD_SRC")) +
          " Correct it in the letter definitions, or use the program that made the data.");
}

/// The rules that mean something for the field.
FieldRules PossibleRules(FieldKind kind, const std::string& source) {
  switch (kind) {
    case FieldKind::kSystem:
    case FieldKind::kData:
      if (source == "customer.address") return rule::kOfReference | rule::kOfAddress;
      if (source == "form.number") return rule::kOfReference | rule::kOpenDocument;
      return rule::kOfReference;
    case FieldKind::kQuery:
      return rule::kOfReference | rule::kOfQuery;
    case FieldKind::kFunction:
    case FieldKind::kLocal:
      return rule::kOfReference;
    case FieldKind::kParagraph:
      return rule::kOneOf;
    case FieldKind::kTable:
    case FieldKind::kColumn:
    case FieldKind::kUser:
      break;
  }
  return 0;
}

/// Letters, digits and underscores, a letter first: what a bookmark and an element can both be called.
bool IsFieldName(std::string_view name) {
  const auto letter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
  return !name.empty() && letter(name.front()) &&
         std::ranges::all_of(name, [&](char c) { return letter(c) || (c >= '0' && c <= '9') || c == '_'; });
}

/// Checks the rows of the file one after the other; a table stands before its columns.
class DefinitionCheck {
 public:
  explicit DefinitionCheck(const TabTable& table) : table_(table) {}

  void Row(std::size_t row) {
    const auto text = [&](std::string_view column) { return table_.Text(row, column); };
    const auto kind = FindKind(text("FLD_KIND"));
    if (!kind) table_.Refuse(row, "FLD_KIND", "There is no kind of field \"" + text("FLD_KIND") + "\".");
    if (!IsKnownSource(*kind, text("FLD_SRC"))) {
      table_.Refuse(row, "FLD_SRC",
                    SourceFault(*kind, "A field of kind \"" + text("FLD_KIND") + "\"", text("FLD_SRC")));
    }
    if (!IsFieldName(text("FLD_NM")))
      table_.Refuse(row, "FLD_NM", "\"" + text("FLD_NM") + "\" names no field.");
    const bool in_table = tables_.contains({text("LTR_TYP_ID"), text("FLD_PARENT")});
    if (*kind == FieldKind::kColumn ? !in_table : !text("FLD_PARENT").empty()) {
      table_.Refuse(row, "FLD_PARENT", "\"" + text("FLD_PARENT") + "\" is no table field above this one.");
    }
    if (*kind == FieldKind::kFunction) CheckCall(row);
    if (!names_.insert({text("LTR_TYP_ID"), text("FLD_PARENT"), text("FLD_NM")}).second) {
      table_.Refuse(row, "FLD_NM", "The field \"" + text("FLD_NM") + "\" comes twice.");
    }
    if (*kind == FieldKind::kTable) tables_.insert({text("LTR_TYP_ID"), text("FLD_NM")});
    CheckRules(row, *kind);
  }

 private:
  void CheckRules(std::size_t row, FieldKind kind) const {
    const auto text = [&](std::string_view column) { return table_.Text(row, column); };
    const auto rules = ReadRules(text("FLD_RULE"));
    if (!rules || (*rules & ~PossibleRules(kind, text("FLD_SRC"))) != 0)
      table_.Refuse(row, "FLD_RULE", "\"" + text("FLD_RULE") + "\" is no rule for this field.");
    if (std::ranges::find(kNeeds, text("FLD_REQ")) == kNeeds.end())
      table_.Refuse(row, "FLD_REQ", "\"" + text("FLD_REQ") + "\" has to be Y, N or I.");
  }

  void CheckCall(std::size_t row) const {
    const auto call = ReadFunctionCall(table_.Text(row, "FLD_SRC")).value();
    for (const auto& field : call.fields) {
      if (names_.contains({table_.Text(row, "LTR_TYP_ID"), "", field})) continue;
      table_.Refuse(row, "FLD_SRC", "There is no field \"" + field + "\" above this one.");
    }
  }

  const TabTable& table_;
  std::set<std::pair<std::string, std::string>> tables_;
  std::set<std::array<std::string, 3>> names_;
};

}  // namespace

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
                      .kind = FindKind(rows->Text(row, "FLD_KIND")).value(),
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

void StoreLetterFields(Database& database, const std::filesystem::path& file) {
  const auto table = TabTable::Read(file);
  DefinitionCheck check(table);
  database.Change("DELETE FROM letter_field");
  for (std::size_t row = 0; row < table.RowCount(); ++row) {
    check.Row(row);
    const auto text = [&](std::string_view column) { return platform::Value(table.Text(row, column)); };
    database.Change(
        "INSERT INTO letter_field (LTR_TYP_ID, FLD_ORD, FLD_NM, FLD_PARENT, FLD_DES, FLD_KIND, FLD_SRC, "
        "FLD_REQ, FLD_DFLT, FLD_RULE, FLD_LINE)"
        " VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
        {text("LTR_TYP_ID"), row, text("FLD_NM"), text("FLD_PARENT"), text("FLD_DES"), text("FLD_KIND"),
         text("FLD_SRC"), text("FLD_REQ"), text("FLD_DFLT"), text("FLD_RULE"), table.Line(row)});
  }
}

}  // namespace server
