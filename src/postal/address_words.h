#pragma once

#include <span>
#include <string>
#include <string_view>

/// The words of postal addressing and what the post writes for them. All in capitals, as words without
/// punctuation.
namespace postal {

/// "N" for "NORTH" and "N"; "" where the word is no directional.
std::string_view Directional(std::string_view word);
/// "AVE" for "AVENUE", "AVEN" and "AVE"; "" where the word is no street suffix.
std::string_view Suffix(std::string_view word);
/// "STE" for "SUITE" and "STE"; "" where the word names no unit of a building.
std::string_view UnitWord(std::string_view word);
/// Whether the unit has a number or letter behind its word: an "APT" has, a "BSMT" has not.
bool UnitHasNumber(std::string_view unit_word);
/// What two spellings of the same word have in common: the abbreviation of a directional or suffix, "ST" for
/// "SAINT", "1ST" for "FIRST"; else the word itself.
std::string_view CommonForm(std::string_view word);

/// A road that has a number or letter instead of a name: "CO RD" is written "COUNTY ROAD".
struct RoadName {
  std::string_view words;  ///< as people write it, parted by blanks
  std::string_view standard;
};
/// Those of more words first.
std::span<const RoadName> RoadNames();

}  // namespace postal
