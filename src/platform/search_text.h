#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Texts as people compare them when they look for something.
namespace platform {

/// `text` as words with one blank between them, without case and accents: "Café  Élan, L.L.C." is
/// "cafe elan l l c", and "Łukasz Sørby" is "lukasz sorby". A word is a run of letters and digits; an
/// apostrophe in it is left out ("O'March" is "omarch"), any other character separates.
std::string FoldForSearch(std::string_view text);

/// The words of FoldForSearch, in their order.
std::vector<std::string> SearchWords(std::string_view text);

/// A part of a text, in bytes.
struct TextRange {
  std::size_t start = 0;
  std::size_t length = 0;
  bool operator==(const TextRange&) const = default;
};

/// What a search for `words` (of SearchWords) meets in a text as it is written: of each word of the text that
/// begins with one of them, that beginning. In the order of the text, none within another.
std::vector<TextRange> RangesOfWords(std::string_view text, const std::vector<std::string>& words);

/// The same for a number however it is punctuated: of `text` from the first to the last digit of what
/// `typed` holds as a number, blanks and marks left out ("405 521" meets "405) 521" in "(405) 521-2485");
/// nothing where it is not there.
std::vector<TextRange> RangesOfNumber(std::string_view text, std::string_view typed);

/// Whether every word occurs in a text that FoldForSearch has folded, also inside a longer word.
bool HoldsWords(std::string_view folded, const std::vector<std::string>& words);

}  // namespace platform
