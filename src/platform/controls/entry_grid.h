#pragma once

#include <optional>
#include <string>

#include "platform/controls/grid.h"

namespace platform {

/// A grid in one column of which the user enters values: writes texts, or sets ticks (1 and 0 in the rows).
///
/// The user does nothing in a grid that is disabled or hidden.
class EntryGrid : public Grid {
 public:
  enum class Entry { kText, kTick };

  std::string entry_key;  ///< the column in which the user enters
  Entry entry = Entry::kText;

  // The user enters a value: the row becomes the current one, and CellChanged follows where the value
  // differs. A text goes in as TypedValue has it.
  void UserEdits(std::size_t row, std::string text);
  void UserTicks(std::size_t row, bool tick);
  void UserMovesTo(std::size_t row);
  bool IsTicked(std::size_t row) const;

  /// As MakeCurrent, and tells of it.
  void MoveTo(std::size_t row);
  /// The next row after the current one, from the top again after the last, whose entry is blank. Nothing
  /// where no other row is blank: the user has just left the current one blank, and may mean it.
  std::optional<std::size_t> NextBlank() const;

  /// The user has changed the entry of the current row.
  Event<> CellChanged;
  /// What the user entered in the row had several lines, and has become one.
  Event<std::size_t> LinesJoined;
  /// Another row is current, by the user or by MoveTo.
  Event<> CurrentChanged;

 private:
  bool MayEnter(std::size_t row) const;
  void Enter(std::size_t row, Value value);
};

}  // namespace platform
