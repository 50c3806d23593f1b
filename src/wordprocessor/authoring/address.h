#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <vector>

#include "wordprocessor/authoring/check.h"
#include "wordprocessor/document/document.h"

namespace wordprocessor {

/// The address of a sample letter, line by line: words that no template has.
inline constexpr auto kSampleAddress = std::to_array<std::string_view>({"Qvxja", "Qvxjb", "Qvxjc", "Qvxjd"});

/// The letter with that address in it, to be laid out. `letter` is a template, nothing merged yet, with the
/// letterhead attached. Nothing where the envelope's window is not to show the customer's address: where the
/// letter has none, where somebody else's (a bookmark with "ADDR" in its name) stands before it, or where it
/// stands within a text. Throws Failure kDamaged where a part cannot be read.
std::optional<DocxDocument> SampleLetter(DocxDocument letter);

/// A word of a letter's pages; places in inches from the page's upper left corner.
struct PlacedWord {
  std::string_view word;
  int page = 0;  ///< counted from 0
  double left = 0;
  double top = 0;
  double bottom = 0;
};

/// A warning where the window of a No. 10 envelope does not show all of the sample address, however the
/// folded sheet lies. `words`: where the words of the address stand in the sample letter, more than once as
/// may be, in any order.
std::vector<TemplateFinding> CheckAddress(const std::vector<PlacedWord>& words);

}  // namespace wordprocessor
