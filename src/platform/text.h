#pragma once

#include <compare>
#include <cstddef>
#include <string>
#include <string_view>

/// Text is UTF-8 in std::string everywhere. Case mapping and counting go by characters (ICU), never by bytes.
namespace platform {

/// Carriage return and line feed: what stands between the lines of a message box.
inline constexpr std::string_view kLineBreak = "\r\n";

/// `text` without blanks (character 32) at either end. Other white space stays.
std::string_view Trim(std::string_view text);

/// Whether a reader sees nothing of it: Unicode's white space and line ends, and the characters that have no
/// width and no ink, such as the zero-width space and the byte order mark.
bool IsBlank(std::string_view text);
/// `text` without white space, line ends and other characters that show nothing at either end, in Unicode's
/// sense; "" where it is blank. `text` is UTF-8; bytes that are not stay.
std::string_view TrimBlanks(std::string_view text);
/// Whether `text` holds nothing but letters (Unicode's, marks on them included) and the characters of
/// `others`; "" does, bytes that are no UTF-8 do not.
bool HoldsOnlyLetters(std::string_view text, std::u32string_view others);
/// `text` on one line: each run of line breaks, and the blanks around it, has become one blank.
std::string OnOneLine(std::string_view text);

/// Upper and lower case by Unicode's default mapping, the same in every locale.
std::string UpperCase(std::string_view text);
std::string LowerCase(std::string_view text);

/// Unicode's full case folding: two texts that differ in case only fold to the same text.
std::string FoldCase(std::string_view text);

/// Order of the folded texts by code point; "equivalent" where the two differ in case only.
std::weak_ordering CompareIgnoringCase(std::string_view left, std::string_view right);
inline bool EqualsIgnoringCase(std::string_view left, std::string_view right) {
  return CompareIgnoringCase(left, right) == 0;
}

/// Letters and their accents as one character wherever Unicode has one (NFC). `text` is UTF-8.
std::string Composed(std::string_view text);

/// Every occurrence of `from` (not empty) replaced by `to`, left to right, in one pass.
std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to);

/// `text` in double quotes, as messages name things.
std::string Quoted(std::string_view text);

/// How many characters (code points) `text` has.
std::size_t CharacterCount(std::string_view text);

/// The first `count` characters of `text`; all of it when it is shorter. Never cuts a character.
std::string_view FirstCharacters(std::string_view text, std::size_t count);

/// How many bytes of `text`, from its start, are well-formed UTF-8 (Unicode 15, table 3-7: no overlong
/// forms, no surrogates).
std::size_t ValidUtf8Length(std::string_view text);
inline bool IsValidUtf8(std::string_view text) {
  return ValidUtf8Length(text) == text.size();
}

}  // namespace platform
