#include "platform/controls/grid_text.h"

#include <algorithm>
#include <string_view>

#include "platform/text.h"

namespace platform {
namespace {

constexpr std::string_view kBreaks = "\t\r\n\v\f";

std::string OneLine(std::string_view value) {
  auto text = ReplaceAll(value, kLineBreak, " ");
  std::ranges::replace_if(
      text, [](char byte) { return kBreaks.find(byte) != std::string_view::npos; }, ' ');
  return text;
}

template <typename CellOf>
void AddLine(std::string& text, const std::vector<std::size_t>& columns, CellOf cell_of) {
  for (std::size_t n = 0; n < columns.size(); ++n) {
    if (n > 0) text += '\t';
    text += OneLine(cell_of(columns[n]));
  }
  text += '\n';
}

}  // namespace

std::string TextOfRows(Grid& grid, const std::vector<std::size_t>& rows,
                       const std::vector<std::size_t>& columns) {
  std::string text;
  const auto shown = grid.rows();
  if (!shown || rows.empty() || columns.empty()) return text;
  const RecordSet::Edit edit(*shown);  // rows that were never shown change here, by the thousand perhaps
  AddLine(text, columns, [&](std::size_t column) { return grid.columns.at(column).Heading(); });
  for (const auto row : rows) {
    grid.EnsureRowLoaded(row);
    AddLine(text, columns, [&](std::size_t column) { return grid.CellText(row, grid.columns.at(column)); });
  }
  return text;
}

}  // namespace platform
