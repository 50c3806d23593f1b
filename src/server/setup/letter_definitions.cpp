#include "server/setup/letter_definitions.h"

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "platform/agreed/field_names.h"
#include "platform/agreed/letter_types.h"
#include "platform/text.h"
#include "server/context/field_functions.h"
#include "server/context/field_queries.h"
#include "server/context/letter_fields.h"

namespace server {
namespace {

using platform::Quoted;
using platform::TableFaults;
using platform::TabTable;

constexpr auto kDefinitionColumns =
    std::to_array<std::string_view>({"LTR_TYP_ID", "FLD_NM", "FLD_PARENT", "FLD_DES", "FLD_KIND", "FLD_SRC",
                                     "FLD_REQ", "FLD_DFLT", "FLD_RULE"});

constexpr auto kLetterColumns =
    std::to_array<std::string_view>({"REGION", "LTR_TYP_ID", "LTR_NM", "LTR_ONLN_IND"});

// Needed, not needed, and needed for there to be a letter at all ("I": else it is ignored).
constexpr auto kNeeds = std::to_array<std::string_view>({"Y", "N", "I"});

struct Contradiction {
  FieldRules rules;
  std::string_view names;
};

constexpr auto kContradictions = std::to_array<Contradiction>({
    {rule::kInState | rule::kOutOfState, "IN_STATE and OUT_OF_STATE"},
    {rule::kPreferMail | rule::kPreferResidential, "PREFER_MAIL and PREFER_RESIDENTIAL"},
    {rule::kAmount | rule::kDay, "AMOUNT and DAY"},
});

/// The rules that mean something for the field.
FieldRules PossibleRules(FieldKind kind, const std::string& source) {
  switch (kind) {
    case FieldKind::kSystem:
    case FieldKind::kData:
      if (source == "customer.address") return rule::kIndirect | rule::kOfAddress;
      if (source == "form.number") return rule::kIndirect | rule::kOpenDocument;
      return rule::kIndirect;
    case FieldKind::kQuery:
      return rule::kIndirect | rule::kOfQuery;
    case FieldKind::kFunction:
      return rule::kOfFunction;
    case FieldKind::kLocal:
      return rule::kIndirect;
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

/// Whether the server knows the field's value while it puts a letter together.
bool HasValue(FieldKind kind) {
  return kind != FieldKind::kTable && kind != FieldKind::kUser && kind != FieldKind::kParagraph;
}

/// Checks the rows one after the other; a table stands before its columns.
class DefinitionCheck {
 public:
  DefinitionCheck(const TabTable& table, TableFaults& faults) : table_(table), faults_(faults) {}

  void Run() {
    for (row_ = 0; row_ < table_.RowCount(); ++row_) {
      CheckName();
      CheckNeed();
      const auto kind = FindFieldKind(Text("FLD_KIND"));
      if (!kind) Refuse("FLD_KIND", Quoted(Text("FLD_KIND")) + " is no kind of field. " + Kinds());
      if (kind) CheckKind(*kind);
      fields_.try_emplace({Text("LTR_TYP_ID"), Text("FLD_PARENT"), Text("FLD_NM")},
                          Known{table_.Line(row_), kind});
    }
  }

 private:
  using Name = std::array<std::string, 3>;  // letter type, table field, field
  struct Known {
    std::size_t line;
    std::optional<FieldKind> kind;  // nothing for one that there is not
  };

  static std::string Kinds() {
    return "There is DATA, SYSTEM, TABLE, COLUMN, QUERY, FUNCTION, LOCAL, USER and PARAGRAPH.";
  }
  const std::string& Text(std::string_view column) const { return table_.Text(row_, column); }
  void Refuse(std::string_view column, const std::string& what) {
    faults_.Add(table_.Place(row_, column), what);
  }

  void CheckName() {
    const auto& name = Text("FLD_NM");
    if (!IsFieldName(name)) {
      return Refuse("FLD_NM",
                    Quoted(name) + " names no field. Write letters, digits and underscores, a letter first.");
    }
    const auto known = fields_.find({Text("LTR_TYP_ID"), Text("FLD_PARENT"), name});
    if (known == fields_.end()) return;
    Refuse("FLD_NM", "The letter has the field " + Quoted(name) + " in line " +
                         std::to_string(known->second.line) + " already. Remove one of the two.");
  }

  void CheckNeed() {
    if (std::ranges::find(kNeeds, Text("FLD_REQ")) != kNeeds.end()) return;
    Refuse("FLD_REQ", Quoted(Text("FLD_REQ")) + " is unknown. Write Y, N or I.");
  }

  void CheckKind(FieldKind kind) {
    const auto fault = SourceFault(kind, Text("FLD_SRC"));
    if (!fault.empty()) {
      Refuse("FLD_SRC", "A field of kind " + Quoted(Text("FLD_KIND")) + " cannot come from " +
                            Quoted(Text("FLD_SRC")) + ". " + fault);
    } else if (kind == FieldKind::kFunction) {
      CheckCall();
    }
    CheckParent(kind);
    CheckPrefix(kind);
    const auto rules = ReadRules(Text("FLD_RULE"));
    if (!rules || (*rules & ~PossibleRules(kind, Text("FLD_SRC"))) != 0) {
      return Refuse("FLD_RULE",
                    Quoted(Text("FLD_RULE")) + " is no rule for this field. Correct it, or leave it out.");
    }
    CheckContradictions(*rules);
  }

  // What is asked of an address is asked of the letter, whichever field says it.
  void CheckContradictions(FieldRules rules) {
    auto& of_letter = address_rules_[Text("LTR_TYP_ID")];
    const auto before = of_letter;
    of_letter |= rules & rule::kOfAddress;
    for (const auto& [both, names] : kContradictions) {
      if (((rules | of_letter) & both) != both || (before & both) == both) continue;
      Refuse("FLD_RULE", "The rules " + std::string(names) + " exclude each other. Leave one of them out.");
    }
  }

  void CheckParent(FieldKind kind) {
    const auto& parent = Text("FLD_PARENT");
    if (kind != FieldKind::kColumn) {
      if (!parent.empty()) Refuse("FLD_PARENT", Quoted(parent) + " is for a COLUMN only. Leave it out.");
      return;
    }
    const auto table = fields_.find({Text("LTR_TYP_ID"), "", parent});
    if (table != fields_.end() && table->second.kind == FieldKind::kTable) return;
    Refuse("FLD_PARENT",
           Quoted(parent) + " is no TABLE above this one. Name the table field that the column belongs to.");
  }

  // Programs know an optional paragraph by its name, and authors what the officer enters.
  void CheckPrefix(FieldKind kind) {
    const auto& name = Text("FLD_NM");
    const auto refuse = [&](const char* what) { Refuse("FLD_NM", Quoted(name) + what); };
    const bool is_paragraph = kind == FieldKind::kParagraph;
    const bool is_value = kind == FieldKind::kUser;
    if (is_paragraph && !name.starts_with(platform::kParagraphMark))
      refuse(" has to begin with PARA_, as paragraphs do.");
    if (!is_paragraph && platform::IsParagraphField(name))
      refuse(" has PARA_ in it, which is for paragraphs only.");
    if (is_value && !name.starts_with("U_")) refuse(" has to begin with U_, as values of the officer do.");
    if (!is_value && name.starts_with("U_"))
      refuse(" begins with U_, which is for fields of kind USER only.");
  }

  void CheckCall() {
    const auto call = ReadFunctionCall(Text("FLD_SRC")).value();
    for (const auto& field : call.fields) {
      const auto known = fields_.find({Text("LTR_TYP_ID"), "", field});
      if (known == fields_.end()) {
        Refuse("FLD_SRC",
               "There is no field " + Quoted(field) + " above this one. " + std::string(kFunctionRule));
      } else if (known->second.kind && !HasValue(*known->second.kind)) {
        Refuse("FLD_SRC", Quoted(field) + " has no value that a function could take. Name another field.");
      }
    }
  }

  const TabTable& table_;
  TableFaults& faults_;
  std::map<Name, Known> fields_;                     // above the row
  std::map<std::string, FieldRules> address_rules_;  // by letter type
  std::size_t row_ = 0;
};

using LetterTypes = std::set<std::string, std::less<>>;

/// Each letter type is told of once.
class LetterTypeCheck {
 public:
  LetterTypeCheck(const TabTable& letters, const TabTable& fields, TableFaults& faults)
      : letters_(letters), fields_(fields), faults_(faults) {}

  void Run() {
    RequireTypes(fields_, TypesOf(letters_), [](const std::string& type) {
      return "There is no letter type " + Quoted(type) +
             " in letters.tsv. Enter it there, or correct it here.";
    });
    auto with_fields = TypesOf(fields_);
    // Made elsewhere: nobody fills it in here.
    for (std::size_t row = 0; row < letters_.RowCount(); ++row) {
      if (letters_.Text(row, "LTR_ONLN_IND") == platform::made_where::kElsewhere)
        with_fields.insert(letters_.Text(row, kType));
    }
    RequireTypes(letters_, std::move(with_fields), [](const std::string& type) {
      return "The letter type " + Quoted(type) + " has no fields. Enter them in " +
             std::string(kDefinitionFile) + ", or give it the LTR_ONLN_IND \"E\" if it is made elsewhere.";
    });
  }

 private:
  static constexpr std::string_view kType = "LTR_TYP_ID";

  static LetterTypes TypesOf(const TabTable& table) {
    LetterTypes types;
    for (std::size_t row = 0; row < table.RowCount(); ++row) types.insert(table.Text(row, kType));
    return types;
  }

  template <typename What>
  void RequireTypes(const TabTable& table, LetterTypes known, What what) {
    for (std::size_t row = 0; row < table.RowCount(); ++row) {
      const auto& type = table.Text(row, kType);
      if (known.insert(type).second) faults_.Add(table.Place(row, kType), what(type));
    }
  }

  const TabTable& letters_;
  const TabTable& fields_;
  TableFaults& faults_;
};

}  // namespace

TabTable ReadLetterDefinitions(const std::filesystem::path& product_data_folder, TableFaults& faults) {
  const auto before = faults.Count();
  auto table = TabTable::Read(product_data_folder / "server" / kDefinitionFile, kDefinitionColumns, faults);
  TableFaults of_letters;  // told by the reference database, which takes that table in
  const auto letters =
      TabTable::Read(product_data_folder / "reference" / "letters.tsv", kLetterColumns, of_letters);
  // A row that could not be read would be missed by the other table.
  const bool are_whole = faults.Count() == before && of_letters.IsEmpty();
  DefinitionCheck(table, faults).Run();
  if (are_whole) LetterTypeCheck(letters, table, faults).Run();
  return table;
}

void TryQueries(Database& database, const TabTable& definitions, platform::Date today, TableFaults& faults) {
  for (std::size_t row = 0; row < definitions.RowCount(); ++row) {
    const auto& statement = definitions.Text(row, "FLD_SRC");
    const bool is_query = FindFieldKind(definitions.Text(row, "FLD_KIND")) == FieldKind::kQuery;
    if (!is_query || !FieldQueryFault(statement).empty()) continue;
    const auto reason = TryFieldQuery(database, statement, today);
    if (reason.empty()) continue;
    faults.Add(definitions.Place(row, "FLD_SRC"),
               "The query of the field " + Quoted(definitions.Text(row, "FLD_NM")) + " of letter type " +
                   Quoted(definitions.Text(row, "LTR_TYP_ID")) + " fails: " + reason +
                   ". Correct the statement.");
  }
}

void StoreLetterFields(Database& database, const TabTable& definitions) {
  database.Change("DELETE FROM letter_field");
  for (std::size_t row = 0; row < definitions.RowCount(); ++row) {
    const auto text = [&](std::string_view column) { return platform::Value(definitions.Text(row, column)); };
    database.Change(
        R"(INSERT INTO letter_field (LTR_TYP_ID, FLD_ORD, FLD_NM, FLD_PARENT, FLD_DES, FLD_KIND, FLD_SRC,
           FLD_REQ, FLD_DFLT, FLD_RULE, FLD_LINE)
           VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?))",
        {text("LTR_TYP_ID"), row, text("FLD_NM"), text("FLD_PARENT"), text("FLD_DES"), text("FLD_KIND"),
         text("FLD_SRC"), text("FLD_REQ"), text("FLD_DFLT"), text("FLD_RULE"), definitions.Line(row)});
  }
}

}  // namespace server
