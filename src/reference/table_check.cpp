#include "reference/table_check.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <set>
#include <string>
#include <utility>

#include "platform/agreed/letter_types.h"
#include "platform/text.h"
#include "platform/value.h"
#include "reference/reference_schema.h"

namespace reference {
namespace {

using platform::Quoted;
using platform::TableFaults;
using platform::TabTable;

constexpr std::string_view kFirstDay = "EFCTV_DT";

/// Letter types and counties are 32-bit numbers to the programs, which write them without zeros in front.
bool IsNumber(std::string_view text) {
  std::int32_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() && std::to_string(number) == text;
}

bool IsZipPrefix(std::string_view text) {
  return text.size() == 3 && text.find_first_not_of("0123456789") == std::string_view::npos;
}

bool IsFileName(std::string_view text) {
  return text.find_first_of("/\\:") == std::string_view::npos && text != "." && text != "..";
}

// Times and days are compared as texts: another spelling of the same would come before or after it.
bool IsTimestamp(const std::string& text) {
  const auto time = platform::ParseTimestamp(text);
  return time && platform::TimestampText(*time) == text;
}

bool IsDate(const std::string& text) {
  const auto date = platform::ParseDate(text);
  return date && platform::DateText(*date) == text;
}

/// What is wrong with a cell; "" when nothing is.
std::string_view Complaint(ColumnKind kind, const std::string& cell) {
  if (cell.empty()) return IsOptional(kind) ? "" : "must not be empty.";
  switch (kind) {
    case ColumnKind::kText:
    case ColumnKind::kOptionalText:
      return "";
    case ColumnKind::kLetterType:
      return IsNumber(cell) ? "" : "is no letter type. Write a number without zeros in front.";
    case ColumnKind::kCounty:
      return IsNumber(cell) ? "" : "is no county's number. Write a number without zeros in front.";
    case ColumnKind::kOnlineIndicator:
      return platform::made_where::IsKnown(cell) ? ""
                                                 : "is unknown. Write O (on line), B (by the batch), "
                                                   "S (by the system) or E (made elsewhere).";
    case ColumnKind::kFileName:
      return IsFileName(cell) ? "" : "is no plain file name. Leave the folder out.";
    case ColumnKind::kDate:
    case ColumnKind::kOptionalDate:
      return IsDate(cell) ? "" : "is no date. Write it as yyyy-mm-dd.";
    case ColumnKind::kTimestamp:
    case ColumnKind::kOptionalTimestamp:
      return IsTimestamp(cell) ? "" : "is no time stamp. Write it as yyyy-mm-dd hh.mm.ss, all 19 characters.";
    case ColumnKind::kZipPrefix:
      return IsZipPrefix(cell) ? "" : "begins no zip code. Write its first three digits.";
    case ColumnKind::kTroop:
      return platform::CharacterCount(cell) == 1 ? "" : "is no troop. Write one letter or digit.";
    case ColumnKind::kDistrict:
      return platform::CharacterCount(cell) <= 4 ? ""
                                                 : "is too long for a district. Write up to four characters.";
  }
  return "";
}

std::string Listed(std::span<const std::string_view> names) {
  std::string list;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (i > 0) list += i + 1 == names.size() ? " and " : ", ";
    list += names[i];
  }
  return list;
}

/// Looks at each row by itself, and at what it shares with the others of its table.
class RowCheck {
 public:
  RowCheck(const Table& table, const TabTable& rows, TableFaults& faults)
      : table_(table), rows_(rows), faults_(faults) {}

  void Run() {
    for (std::size_t row = 0; row < rows_.RowCount(); ++row) {
      const auto before = faults_.Count();
      CheckCells(row);
      if (faults_.Count() == before) CheckDays(row);
      CheckKey(row);
    }
  }

 private:
  void CheckCells(std::size_t row) {
    for (const auto& column : table_.columns) {
      const auto& cell = rows_.Text(row, column.name);
      const auto complaint = Complaint(column.kind, cell);
      if (!complaint.empty())
        faults_.Add(rows_.Place(row, column.name), Quoted(cell) + " " + std::string(complaint));
    }
  }

  void CheckDays(std::size_t row) {
    if (table_.last_day.empty()) return;
    const auto& first = rows_.Text(row, kFirstDay);
    const auto& last = rows_.Text(row, table_.last_day);
    if (last.empty() || first <= last) return;
    faults_.Add(rows_.Place(row, table_.last_day), Quoted(last) + " lies before " + std::string(kFirstDay) +
                                                       " " + Quoted(first) + ". Correct one of them.");
  }

  // Text compares without regard to case in the database.
  void CheckKey(std::size_t row) {
    std::string key;
    for (const auto& column : table_.key) key += platform::FoldCase(rows_.Text(row, column)) + '\t';
    const auto [first, is_new] = lines_.try_emplace(key, rows_.Line(row));
    if (is_new) return;
    faults_.Add(rows_.Place(row, table_.key.back()),
                "The row has the same " + Listed(table_.key) + " as line " + std::to_string(first->second) +
                    ". Remove one of the two, or change its " + std::string(table_.key.back()) + ".");
  }

  const Table& table_;
  const TabTable& rows_;
  TableFaults& faults_;
  std::map<std::string, std::size_t> lines_;  // by key
};

// Places in kTables of those that refer to one another.
constexpr std::size_t kLetters = 0;
constexpr std::size_t kTemplates = 1;
constexpr std::size_t kCodes = 2;
static_assert(kTables[kLetters].name == "FLS_LETTER" && kTables[kTemplates].name == "FLS_LTR_TEMPLATE" &&
              kTables[kCodes].name == "FLS_CODE");

/// Looks at what tables say of one another.
class RelationCheck {
 public:
  RelationCheck(const std::vector<TabTable>& tables, TableFaults& faults)
      : letters_(tables[kLetters]), templates_(tables[kTemplates]), codes_(tables[kCodes]), faults_(faults) {}

  void Run() {
    for (std::size_t row = 0; row < letters_.RowCount(); ++row)
      letter_types_.insert(Of(letters_, row, "LTR_TYP_ID"));
    for (std::size_t row = 0; row < codes_.RowCount(); ++row) {
      if (IsOfTable(row, "REFDOCTYP")) form_types_.insert(Of(codes_, row, "CD_TBL_CD"));
      if (IsOfTable(row, "LTRPRNTCD")) print_statuses_.insert(Of(codes_, row, "CD_TBL_CD"));
    }
    for (std::size_t row = 0; row < templates_.RowCount(); ++row)
      RequireLetterType(templates_, row, "LTR_TYP_ID");
    for (std::size_t row = 0; row < codes_.RowCount(); ++row) {
      if (IsOfTable(row, "LTRINPUT")) {
        RequireLetterType(codes_, row, "CD_TBL_CD");
        RequireCodes(row, form_types_, "form type", "REFDOCTYP");
      }
      if (IsOfTable(row, "LTRACTION")) RequireCodes(row, print_statuses_, "print status", "LTRPRNTCD");
    }
  }

 private:
  using OfRegion = std::pair<std::string, std::string>;

  static OfRegion Of(const TabTable& table, std::size_t row, std::string_view column) {
    return {platform::FoldCase(table.Text(row, "REGION")), platform::FoldCase(table.Text(row, column))};
  }
  bool IsOfTable(std::size_t row, std::string_view name) const {
    return platform::EqualsIgnoringCase(codes_.Text(row, "CD_TBL_ID"), name);
  }

  void RequireLetterType(const TabTable& table, std::size_t row, std::string_view column) {
    if (letter_types_.contains(Of(table, row, column))) return;
    faults_.Add(table.Place(row, column), "Region " + Quoted(table.Text(row, "REGION")) +
                                              " has no letter type " + Quoted(table.Text(row, column)) +
                                              ". Enter it in letters.tsv, or correct it here.");
  }

  void RequireCodes(std::size_t row, const std::set<OfRegion>& known, const std::string& what,
                    const std::string& code_table) {
    const auto region = platform::FoldCase(codes_.Text(row, "REGION"));
    for (const char type : codes_.Text(row, "ADTL_INFO_TXT")) {
      if (known.contains({region, platform::FoldCase(std::string(1, type))})) continue;
      faults_.Add(codes_.Place(row, "ADTL_INFO_TXT"),
                  Quoted(codes_.Text(row, "ADTL_INFO_TXT")) + " names a " + what + " that code table " +
                      code_table + " has not. Write one letter for each " + what +
                      ", without blanks between them.");
      return;
    }
  }

  const TabTable& letters_;
  const TabTable& templates_;
  const TabTable& codes_;
  TableFaults& faults_;
  std::set<OfRegion> letter_types_;
  std::set<OfRegion> form_types_;
  std::set<OfRegion> print_statuses_;
};

}  // namespace

std::filesystem::path TableFile(const std::filesystem::path& product_data_folder, std::string_view file) {
  return product_data_folder / "reference" / file;
}

std::vector<TabTable> ReadTables(const std::filesystem::path& product_data_folder, TableFaults& faults) {
  const auto before = faults.Count();
  std::vector<TabTable> tables;
  for (const auto& table : kTables) {
    std::vector<std::string_view> names;
    for (const auto& column : table.columns) names.push_back(column.name);
    const auto file = TableFile(product_data_folder, table.file);
    tables.push_back(TabTable::Read(file, names, faults));
    RowCheck(table, tables.back(), faults).Run();
  }
  // A row that is left out, or misspelt, would be missed by every row that refers to it.
  if (faults.Count() == before) RelationCheck(tables, faults).Run();
  return tables;
}

}  // namespace reference
