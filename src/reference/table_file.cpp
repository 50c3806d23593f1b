#include "reference/table_file.h"

#include <string_view>

#include "platform/text.h"
#include "platform/value.h"

namespace reference {
namespace {

using platform::Failure;

std::vector<std::string> SplitAtTabs(std::string_view line) {
  std::vector<std::string> cells;
  for (;;) {
    const auto tab = line.find('\t');
    cells.emplace_back(line.substr(0, tab));
    if (tab == std::string_view::npos) return cells;
    line.remove_prefix(tab + 1);
  }
}

/// What is wrong with a cell; "" when nothing is.
std::string_view Complaint(ColumnKind kind, const std::string& cell) {
  if (cell.empty()) return IsOptional(kind) ? "" : "must not be empty.";
  switch (kind) {
    case ColumnKind::kText:
    case ColumnKind::kOptionalText:
      return "";
    case ColumnKind::kDate:
    case ColumnKind::kOptionalDate:
      return platform::ParseDate(cell) ? "" : "is no date; write it as yyyy-mm-dd.";
    case ColumnKind::kTimestamp:
    case ColumnKind::kOptionalTimestamp:
      return platform::ParseTimestamp(cell) ? "" : "is no time stamp; write it as yyyy-mm-dd hh.mm.ss.";
  }
  return "";
}

}  // namespace

TableFile::TableFile(const std::filesystem::path& file, const Table& table)
    : table_(table), stream_(file, std::ios::binary), name_(file.filename().string()) {
  if (!stream_) throw Failure(Failure::Kind::kNotFound, "\"" + file.string() + "\" cannot be read.");
  const auto header = NextCells();
  if (!header || header->size() != table_.columns.size()) {
    throw Damaged("The header must name the " + std::to_string(table_.columns.size()) + " columns of " +
                  std::string(table_.name) + ".");
  }
  for (std::size_t i = 0; i < header->size(); ++i) {
    if ((*header)[i] == table_.columns[i].name) continue;
    throw Damaged("The header names \"" + (*header)[i] + "\" where " + std::string(table_.columns[i].name) +
                  " belongs.");
  }
}

std::optional<std::vector<std::string>> TableFile::Next() {
  auto cells = NextCells();
  if (!cells) return std::nullopt;
  if (cells->size() != table_.columns.size()) {
    throw Damaged("There are " + std::to_string(cells->size()) + " cells for " +
                  std::to_string(table_.columns.size()) + " columns.");
  }
  for (std::size_t i = 0; i < cells->size(); ++i) CheckCell(table_.columns[i], (*cells)[i]);
  return cells;
}

std::optional<std::vector<std::string>> TableFile::NextCells() {
  std::string line;
  while (std::getline(stream_, line)) {
    ++line_;
    if (line.ends_with('\r')) line.pop_back();
    if (line.empty()) continue;
    if (!platform::IsValidUtf8(line)) throw Damaged("The line is not written in UTF-8.");
    return SplitAtTabs(line);
  }
  return std::nullopt;
}

void TableFile::CheckCell(const Column& column, const std::string& cell) const {
  const auto complaint = Complaint(column.kind, cell);
  if (complaint.empty()) return;
  throw Damaged(std::string(column.name) + " \"" + cell + "\" " + std::string(complaint));
}

Failure TableFile::Damaged(const std::string& reason) const {
  return {Failure::Kind::kDamaged, name_ + ", line " + std::to_string(line_) + ": " + reason};
}

}  // namespace reference
