#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/controls/grid.h"
#include "workspace/messaging/letter_data.h"
#include "workspace/messaging/letter_source.h"

namespace workspace {

/// The letters listed in a page's grid.
class ListedLetters : public LetterSource {
 public:
  /// `grid` outlives this.
  explicit ListedLetters(platform::Grid& grid) : grid_(grid) {}

  bool IsOpen() const override { return true; }
  bool IsBatchBrowser() const override { return false; }
  std::string CurrentText(std::string_view column) const override;
  std::size_t SelectedCount() const override { return grid_.selected_rows().size(); }
  void MakeSelectedCurrent(std::size_t n) override;

 private:
  platform::Grid& grid_;
};

/// The letter of the list's current row, as it is asked for: its number, its template and how it was printed.
/// Throws Failure where there is no such row, or where its number is none.
LetterData CurrentLetter(const LetterSource& letters);

}  // namespace workspace
