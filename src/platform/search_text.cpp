#include "platform/search_text.h"

#include <unicode/errorcode.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>

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
    folded.append(character);
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

bool HoldsWords(std::string_view folded, const std::vector<std::string>& words) {
  return std::ranges::all_of(
      words, [&](const std::string& word) { return folded.find(word) != std::string_view::npos; });
}

}  // namespace platform
