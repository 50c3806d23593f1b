#include "platform/search_text.h"

#include <unicode/errorcode.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <array>
#include <iterator>

#include "platform/failure.h"
#include "platform/text.h"

namespace platform {
namespace {

/// Letters apart from their accents, and compatible forms as one.
icu::UnicodeString Decomposed(std::string_view text) {
  icu::ErrorCode error;
  const auto* const normalizer = icu::Normalizer2::getNFKDInstance(error);
  icu::UnicodeString decomposed;
  if (error.isSuccess()) {
    decomposed = normalizer->normalize(
        icu::UnicodeString::fromUTF8({text.data(), static_cast<int>(text.size())}), error);
  }
  if (error.isSuccess()) return decomposed;
  throw Failure(Failure::Kind::kInternal, std::string("decomposing a text: ") + error.errorName());
}

// The typewriter's, the typographic one, and the grave accent that stands for it in stored letters.
bool IsApostrophe(UChar32 character) {
  return character == U'\'' || character == U'\u2019' || character == U'\u02BC' || character == U'`';
}

struct PlainLetters {
  char16_t letter;
  const char16_t* written;
};
// Letters that are no accented form of another one to Unicode, and are typed as one all the same.
constexpr auto kPlainLetters = std::to_array<PlainLetters>({
    {u'\u00F8', u"o"},   // o with stroke
    {u'\u0142', u"l"},   // l with stroke
    {u'\u0111', u"d"},   // d with stroke
    {u'\u0127', u"h"},   // h with stroke
    {u'\u0131', u"i"},   // i without a dot
    {u'\u00E6', u"ae"},  // ligatures
    {u'\u0153', u"oe"},
    {u'\u00F0', u"d"},   // eth
    {u'\u00FE', u"th"},  // thorn
});

void AppendLetter(icu::UnicodeString& folded, UChar32 character) {
  const auto plain = std::ranges::find(kPlainLetters, character, &PlainLetters::letter);
  plain == kPlainLetters.end() ? folded.append(character) : folded.append(plain->written);
}

}  // namespace

std::string FoldForSearch(std::string_view text) {
  auto letters = Decomposed(text);
  letters.foldCase();
  icu::UnicodeString folded;
  bool between_words = false;
  for (std::int32_t at = 0; at < letters.length(); at = letters.moveIndex32(at, 1)) {
    const auto character = letters.char32At(at);
    if (IsApostrophe(character) || u_charType(character) == U_NON_SPACING_MARK) continue;
    if (u_isalnum(character) == 0) {
      between_words = true;
      continue;
    }
    if (between_words && !folded.isEmpty()) folded.append(u' ');
    between_words = false;
    AppendLetter(folded, character);
  }
  std::string utf8;
  return folded.toUTF8String(utf8);
}

std::vector<std::string> SearchWords(std::string_view text) {
  const auto folded = FoldForSearch(text);
  std::vector<std::string> words;
  for (std::size_t start = 0; start < folded.size();) {
    const auto end = std::min(folded.find(' ', start), folded.size());
    words.push_back(folded.substr(start, end - start));
    start = end + 1;
  }
  return words;
}

namespace {

/// A word of a text, folded, with where in the text each of its bytes ends.
struct PlacedWord {
  std::size_t start = 0;
  std::string folded = {};
  std::vector<std::size_t> ends = {};
};

std::vector<PlacedWord> PlacedWords(std::string_view text) {
  std::vector<PlacedWord> words;
  bool in_word = false;
  for (std::size_t at = 0; at < text.size();) {
    const auto letter = FirstCharacters(text.substr(at), 1);
    if (letter.empty()) break;
    const auto folded = FoldForSearch(letter);
    const auto end = at + letter.size();
    const bool separates = folded.empty() && SearchWords("a" + std::string(letter) + "a").size() > 1;
    if (separates) {
      in_word = false;
    } else if (!folded.empty()) {
      if (!in_word) words.push_back({at});
      in_word = true;
      words.back().folded += folded;
      words.back().ends.resize(words.back().folded.size(), end);
    } else if (in_word) {
      words.back().ends.back() = end;  // an accent, an apostrophe
    }
    at = end;
  }
  return words;
}

bool IsDigit(char character) {
  return character >= '0' && character <= '9';
}
bool IsNumberCharacter(char character) {
  return IsDigit(character) || std::string_view(" ()-./+").find(character) != std::string_view::npos;
}

std::string DigitsOf(std::string_view text) {
  std::string digits;
  std::ranges::copy_if(text, std::back_inserter(digits), IsDigit);
  return digits;
}

/// The numbers of a typed text: runs of digits and marks, those that a letter touches left out.
std::vector<std::string> NumbersIn(std::string_view typed) {
  std::vector<std::string> numbers;
  std::string run;
  const auto end_run = [&] {
    if (auto digits = DigitsOf(run); !digits.empty()) numbers.push_back(std::move(digits));
    run.clear();
  };
  for (std::size_t start = 0; start < typed.size();) {
    const auto end = std::min(typed.find(' ', start), typed.size());
    const auto part = typed.substr(start, end - start);
    if (std::ranges::all_of(part, IsNumberCharacter))
      run += part;
    else
      end_run();
    start = end + 1;
  }
  end_run();
  return numbers;
}

}  // namespace

std::vector<TextRange> RangesOfWords(std::string_view text, const std::vector<std::string>& words) {
  std::vector<TextRange> ranges;
  for (const auto& placed : PlacedWords(text)) {
    std::size_t most = 0;
    for (const auto& word : words)
      if (placed.folded.starts_with(word)) most = std::max(most, word.size());
    if (most > 0) ranges.push_back({placed.start, placed.ends[most - 1] - placed.start});
  }
  return ranges;
}

std::vector<TextRange> RangesOfNumber(std::string_view text, std::string_view typed) {
  const auto digits = DigitsOf(text);
  for (const auto& number : NumbersIn(typed)) {
    const auto found = digits.find(number);
    if (found == digits.npos) continue;
    std::vector<std::size_t> places;
    for (std::size_t at = 0; at < text.size(); ++at)
      if (IsDigit(text[at])) places.push_back(at);
    const auto start = places[found];
    return {{start, places[found + number.size() - 1] + 1 - start}};
  }
  return {};
}

bool HoldsWords(std::string_view folded, const std::vector<std::string>& words) {
  return std::ranges::all_of(
      words, [&](const std::string& word) { return folded.find(word) != std::string_view::npos; });
}

}  // namespace platform
