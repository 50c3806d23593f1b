#pragma once

#include <string>

namespace workspace {

/// The dialogs that a letter may need on its way. Both return when the user has closed them.
class LetterForms {
 public:
  struct EnteredLetter {
    std::string XMLBookMark;  ///< the data context as the user completed it
    bool DocPrinted = false;  ///< the user printed the letter from the dialog
  };

  virtual ~LetterForms() = default;

  /// Shows a data context with its errors.
  virtual void ShowLetterInformation(const std::string& context) = 0;
  /// Lets the user fill what only the user knows. `file_name` is the template's local path.
  virtual EnteredLetter EnterBookmarks(const std::string& file_name, const std::string& template_name,
                                       const std::string& context) = 0;
};

}  // namespace workspace
