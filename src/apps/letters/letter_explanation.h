#pragma once

#include <iosfwd>

#include "apps/letters/headless_office.h"

namespace apps {

/// Answers the letter information form: closes it and keeps in mind that the letter's data are in error.
class ErrorNotice {
 public:
  /// The office outlives this, and this outlives the letter. `will_explain`: the explanation comes anyway.
  ErrorNotice(HeadlessOffice& office, bool will_explain);
  bool given() const { return given_; }

 private:
  bool given_ = false;
};

/// Writes the letter information of the letter at hand as text: the labels, then a line for each field with a
/// mark for its picture, indented by its level. Errors come with their explanation; in the diagnostic mode
/// every field comes with all that is known of it. Data without an error that are not diagnosed say so in a
/// sentence. Nothing is written where the server sent no data.
void ExplainLetter(HeadlessOffice& office, std::ostream& out);

}  // namespace apps
