#include "platform/controls/entry_grid.h"

#include <utility>

#include "platform/controls/typed_text.h"
#include "platform/text.h"

namespace platform {

bool EntryGrid::MayEnter(std::size_t row) const {
  return enabled() && visible() && rows() && row < rows()->RecordCount();
}

void EntryGrid::UserEdits(std::size_t row, std::string text) {
  if (entry != Entry::kText || !MayEnter(row)) return;
  auto value = TypedValue(text);
  if (rows()->Text(row, entry_key) != value) Enter(row, std::move(value));
  if (HasLines(text)) LinesJoined(row);
}

void EntryGrid::UserTicks(std::size_t row, bool tick) {
  if (entry != Entry::kTick || !MayEnter(row)) return;
  if (IsTicked(row) != tick) Enter(row, tick ? 1 : 0);
}

void EntryGrid::Enter(std::size_t row, Value value) {
  MoveTo(row);
  rows()->Set(row, entry_key, std::move(value));
  CellChanged();
}

void EntryGrid::UserMovesTo(std::size_t row) {
  if (MayEnter(row)) MoveTo(row);
}

void EntryGrid::MoveTo(std::size_t row) {
  if (!rows() || rows()->CurrentRow() == row) return;
  MakeCurrent(row);
  CurrentChanged();
}

bool EntryGrid::IsTicked(std::size_t row) const {
  const auto& value = rows()->Get(row, entry_key);
  return !value.IsNull() && value.AsInteger() != 0;
}

std::optional<std::size_t> EntryGrid::NextBlank() const {
  const auto count = rows() ? rows()->RecordCount() : 0;
  const auto current = rows() ? rows()->CurrentRow() : std::nullopt;
  const auto first = current ? *current + 1 : 0;
  for (std::size_t n = 0; n + (current ? 1 : 0) < count; ++n) {
    const auto row = (first + n) % count;
    if (IsBlank(rows()->Text(row, entry_key))) return row;
  }
  return std::nullopt;
}

}  // namespace platform
