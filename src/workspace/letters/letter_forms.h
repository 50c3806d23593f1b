#pragma once

#include <optional>
#include <string>

#include "workspace/messaging/letter_data.h"

namespace workspace {

/// What the letter information form shows. The times, status and errors are those of a letter that was
/// produced already; a new letter has none.
struct LetterInformation {
  std::string context;      ///< the letter's data context
  bool is_refused = false;  ///< a letter that was to be made is not, because of its errors
  std::string first_printed = {};
  std::string last_printed = {};
  std::string print_status = {};                ///< in words
  std::string print_error = {};                 ///< in words
  std::optional<std::string> batch_error = {};  ///< as the batch run gave it; nothing where it is not shown
};

/// The dialogs that a letter may need on its way. Both return when the user has closed them.
class LetterForms {
 public:
  struct EnteredLetter {
    std::string XMLBookMark;  ///< the data context as the user completed it
    bool DocPrinted = false;  ///< the user printed the letter from the dialog
  };

  virtual ~LetterForms() = default;

  /// Shows a data context with its errors.
  virtual void ShowLetterInformation(const LetterInformation& letter) = 0;
  /// Lets the user fill what only the user knows. What is entered is kept, however the dialog closes, and
  /// offered when the same letter for the same customer and form comes again before another one.
  virtual EnteredLetter EnterBookmarks(const LetterData& letter) = 0;
};

}  // namespace workspace
