#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "composition/frm_letter.h"

namespace apps {

/// What the command line says for the form in which a letter is completed.
struct LetterEntries {
  std::vector<std::pair<std::string, std::string>> values;  ///< bookmark and value
  std::vector<std::string> paragraphs;                      ///< to be ticked
  std::optional<std::string> free_text;

  bool IsEmpty() const { return values.empty() && paragraphs.empty() && !free_text; }

  /// Why the entries do not fit the letter, naming what it has; nothing where they do. Names are taken in any
  /// case.
  std::optional<std::string> Refusal(const composition::frmLetter& form) const;
  /// Works the form's controls as a user does.
  void FillIn(composition::frmLetter& form) const;
};

/// How the command line gives what the form has just asked for, a line for each: the names that --set and
/// --paragraph take. "" where nothing is missing.
std::string OptionsForMissing(const composition::frmLetter& form);

}  // namespace apps
