#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace workspace {

/// A list of letters that a letter is printed, viewed or recorded from: a page's grid, or the batch letter
/// browser while it is open.
class LetterSource {
 public:
  virtual ~LetterSource() = default;

  /// Whether the list stands on the screen. The others need an open one.
  virtual bool IsOpen() const = 0;
  /// Of the letters of the batch letter browser the batch run's own error is shown as well.
  virtual bool IsBatchBrowser() const = 0;
  /// A column of the current row; "" for null. Throws Failure kNotFound for an unknown column or without a
  /// current row.
  virtual std::string CurrentText(std::string_view column) const = 0;
  virtual std::size_t SelectedCount() const = 0;
  /// Makes the n-th selected row current, counted from 0 in the order of selection. Throws Failure kNotFound
  /// where fewer rows are selected.
  virtual void MakeSelectedCurrent(std::size_t n) = 0;
};

}  // namespace workspace
