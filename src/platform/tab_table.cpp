#include "platform/tab_table.h"

#include <algorithm>
#include <fstream>

#include "platform/failure.h"
#include "platform/text.h"

namespace platform {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::vector<std::string> SplitAtTabs(std::string_view line) {
  std::vector<std::string> values;
  for (;;) {
    const auto tab = line.find('\t');
    values.emplace_back(Trim(line.substr(0, tab)));
    if (tab == std::string_view::npos) return values;
    line.remove_prefix(tab + 1);
  }
}

bool IsUtf16(std::string_view first_line) {
  return first_line.starts_with("\xFF\xFE") || first_line.starts_with("\xFE\xFF");
}

}  // namespace

TabTable TabTable::Read(const std::filesystem::path& file, Columns columns, TableFaults& faults) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) {
    throw Failure(Failure::Kind::kNotFound,
                  "The file \"" + file.string() + "\" cannot be read. Install the program's data again.");
  }
  TabTable table;
  table.file_ = file;
  const auto before = faults.Count();
  table.ReadLines(stream, faults);
  if (table.columns_.empty() && faults.Count() == before)
    faults.Add(table.PlaceOfLine(1), "The first line has to name the columns.");
  if (!table.HasHeader(columns, faults)) table.rows_.clear();
  return table;
}

TabTable TabTable::Read(const std::filesystem::path& file) {
  TableFaults faults;
  auto table = Read(file, {}, faults);
  faults.OrFail("Correct the file.");
  return table;
}

void TabTable::ReadLines(std::istream& stream, TableFaults& faults) {
  std::string line;
  for (std::size_t number = 1; std::getline(stream, line); ++number) {
    if (number == 1 && IsUtf16(line)) {
      return faults.Add(PlaceOfLine(1), "The file is written in UTF-16. Save it as UTF-8.");
    }
    if (number == 1 && line.starts_with(kByteOrderMark)) line.erase(0, kByteOrderMark.size());
    if (line.find_first_not_of(" \t\r") == std::string::npos) continue;
    if (line.ends_with('\r')) line.pop_back();
    if (!IsValidUtf8(line)) {
      faults.Add(PlaceOfLine(number), "The line is not written in UTF-8. Save the file as UTF-8.");
      if (columns_.empty()) return;
    } else if (columns_.empty()) {
      columns_ = SplitAtTabs(line);
    } else {
      AddRow(number, SplitAtTabs(line), faults);
    }
  }
}

void TabTable::AddRow(std::size_t line, std::vector<std::string> values, TableFaults& faults) {
  if (values.size() == columns_.size()) return rows_.push_back({line, std::move(values)});
  const auto cells =
      values.size() == 1 ? "There is 1 cell" : "There are " + std::to_string(values.size()) + " cells";
  faults.Add(PlaceOfLine(line), cells + " for " + std::to_string(columns_.size()) +
                                    " columns. Separate the cells by one tab each, empty ones too.");
}

bool TabTable::HasHeader(Columns columns, TableFaults& faults) const {
  if (columns.empty() || columns_.empty()) return true;
  const auto [wanted, named] = std::ranges::mismatch(columns, columns_);
  if (wanted == columns.end() && named == columns_.end()) return true;
  const auto what = named == columns_.end() ? std::string("ends") : "names " + Quoted(*named);
  const auto instead = wanted == columns.end() ? " behind the last column. Remove it."
                                               : " where " + std::string(*wanted) + " belongs.";
  faults.Add(PlaceOfLine(1), "The line of column names " + what + instead);
  return false;
}

const std::string& TabTable::Text(std::size_t row, std::string_view column) const {
  const auto found = std::ranges::find(columns_, column);
  if (found == columns_.end())
    throw Failure(Failure::Kind::kDamaged, Quoted(file_.string()) + " has no column " + Quoted(column) + ".");
  return rows_[row].values[static_cast<std::size_t>(found - columns_.begin())];
}

std::string TabTable::Place(std::size_t row, std::string_view column) const {
  return PlaceOfLine(Line(row)) + ", column " + std::string(column);
}

std::string TabTable::PlaceOfLine(std::size_t line) const {
  return Quoted(file_.string()) + ", line " + std::to_string(line);
}

}  // namespace platform
