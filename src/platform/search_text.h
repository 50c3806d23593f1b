#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Texts as people compare them when they look for something.
namespace platform {

/// `text` as words with one blank between them, without case and accents: "Café  Élan, L.L.C." is
/// "cafe elan l l c". A word is a run of letters and digits; an apostrophe in it is left out ("O'March" is
/// "omarch"), any other character separates.
std::string FoldForSearch(std::string_view text);

/// The words of FoldForSearch, in their order.
std::vector<std::string> SearchWords(std::string_view text);

/// Whether every word occurs in a text that FoldForSearch has folded, also inside a longer word.
bool HoldsWords(std::string_view folded, const std::vector<std::string>& words);

}  // namespace platform
