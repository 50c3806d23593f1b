#include "platform/text.h"

#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/errorcode.h>
#include <unicode/normalizer2.h>
#include <unicode/stringpiece.h>
#include <unicode/uchar.h>

#include <algorithm>
#include <array>

#include "platform/failure.h"

namespace platform {
namespace {

constexpr const char* kRootLocale = "";

bool IsAscii(char byte) {
  return static_cast<unsigned char>(byte) < 0x80;
}

bool IsAscii(std::string_view text) {
  return std::ranges::all_of(text, [](char byte) { return IsAscii(byte); });
}

char LowerAscii(char byte) {
  return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
}
char UpperAscii(char byte) {
  return byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - 'a' + 'A') : byte;
}

template <typename MapByte>
std::string MapAscii(std::string_view text, MapByte map) {
  std::string mapped(text);
  std::ranges::transform(mapped, mapped.begin(), map);
  return mapped;
}

// ICU counts in 32-bit integers.
icu::StringPiece Piece(std::string_view text) {
  if (text.size() > 0x7fff'ffff)
    throw Failure(Failure::Kind::kRefused, "A text is longer than two gigabytes.");
  return {text.data(), static_cast<std::int32_t>(text.size())};
}

template <typename Mapping>
std::string MapByIcu(std::string_view text, Mapping mapping) {
  std::string mapped;
  icu::StringByteSink<std::string> sink(&mapped, static_cast<std::int32_t>(text.size() & 0x7fff'ffff));
  icu::ErrorCode error;
  mapping(Piece(text), sink, error);
  if (error.isFailure()) {
    throw Failure(Failure::Kind::kInternal,
                  std::string("mapping the letters of a text: ") + error.errorName());
  }
  return mapped;
}

bool IsContinuation(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

std::weak_ordering OrderBytes(char left, char right) {
  return static_cast<unsigned char>(left) <=> static_cast<unsigned char>(right);
}

/// What may follow a lead byte: how many bytes, and the bounds of the first of them.
struct Utf8Form {
  unsigned char lead_from, lead_to, second_from, second_to;
  std::size_t length;
};
constexpr auto kUtf8Forms = std::to_array<Utf8Form>({
    {0xC2, 0xDF, 0x80, 0xBF, 2},
    {0xE0, 0xE0, 0xA0, 0xBF, 3},
    {0xE1, 0xEC, 0x80, 0xBF, 3},
    {0xED, 0xED, 0x80, 0x9F, 3},
    {0xEE, 0xEF, 0x80, 0xBF, 3},
    {0xF0, 0xF0, 0x90, 0xBF, 4},
    {0xF1, 0xF3, 0x80, 0xBF, 4},
    {0xF4, 0xF4, 0x80, 0x8F, 4},
});

/// Length of the well-formed character (not ASCII) at the start of `text`; 0 where there is none.
std::size_t CharacterLength(std::string_view text) {
  const auto byte = [text](std::size_t at) { return static_cast<unsigned char>(text[at]); };
  for (const auto& form : kUtf8Forms) {
    if (byte(0) < form.lead_from || byte(0) > form.lead_to) continue;
    if (text.size() < form.length || byte(1) < form.second_from || byte(1) > form.second_to) return 0;
    const auto tail = text.substr(2, form.length - 2);
    return std::ranges::all_of(tail, IsContinuation) ? form.length : 0;
  }
  return 0;
}

/// The character at the start of `text`, which is not empty, and its bytes. A byte that is not UTF-8 is one
/// of its own and no blank.
struct FirstCharacter {
  explicit FirstCharacter(std::string_view text)
      : length(IsAscii(text.front()) ? 1 : CharacterLength(text)), character(CodePoint(text, length)) {
    if (length == 0) length = 1;
  }

  std::size_t length;
  UChar32 character;

 private:
  static UChar32 CodePoint(std::string_view text, std::size_t length) {
    constexpr UChar32 kReplacement = 0xFFFD;
    if (length == 0) return kReplacement;
    const auto lead = static_cast<unsigned char>(text.front());
    if (length == 1) return lead;
    auto character = static_cast<UChar32>(lead & (0x7FU >> length));
    for (const char byte : text.substr(1, length - 1)) {
      character = character << 6 | (static_cast<unsigned char>(byte) & 0x3F);
    }
    return character;
  }
};

bool IsLineBreak(UChar32 character) {
  return (character >= 0x0A && character <= 0x0D) || character == 0x85 || character == 0x2028 ||
         character == 0x2029;
}

struct CharacterRange {
  UChar32 first;
  UChar32 last;
};
/// What shows nothing at either end of a text, besides white space. Joiners and variation selectors are none:
/// they belong to the letter before.
constexpr auto kUnseenAtEnd = std::to_array<CharacterRange>({
    {0x00AD, 0x00AD},  // soft hyphen
    {0x115F, 0x1160},  // Hangul fillers
    {0x180E, 0x180E},  // Mongolian vowel separator
    {0x200B, 0x200B},  // zero-width space
    {0x2060, 0x2064},  // word joiner, invisible operators
    {0x3164, 0x3164},  // Hangul filler
    {0xFEFF, 0xFEFF},  // zero-width no-break space
    {0xFFA0, 0xFFA0},  // halfwidth Hangul filler
});

bool IsBlankAtEnd(UChar32 character) {
  return u_isUWhiteSpace(character) ||
         std::ranges::any_of(kUnseenAtEnd, [character](const CharacterRange& range) {
           return range.first <= character && character <= range.last;
         });
}

/// How many bytes of blanks `text` starts with.
std::size_t BlanksLength(std::string_view text) {
  std::size_t at = 0;
  while (at < text.size()) {
    const FirstCharacter next(text.substr(at));
    if (!IsBlankAtEnd(next.character)) break;
    at += next.length;
  }
  return at;
}

bool HasLineBreak(std::string_view text) {
  while (!text.empty()) {
    const FirstCharacter next(text);
    if (IsLineBreak(next.character)) return true;
    text.remove_prefix(next.length);
  }
  return false;
}

}  // namespace

std::string_view Trim(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

bool IsBlank(std::string_view text) {
  while (!text.empty()) {
    const FirstCharacter next(text);
    const bool is_seen = !u_isUWhiteSpace(next.character) &&
                         !u_hasBinaryProperty(next.character, UCHAR_DEFAULT_IGNORABLE_CODE_POINT);
    if (is_seen) return false;
    text.remove_prefix(next.length);
  }
  return true;
}

bool HoldsOnlyLetters(std::string_view text, std::u32string_view others) {
  if (!IsValidUtf8(text)) return false;
  while (!text.empty()) {
    const FirstCharacter next(text);
    const bool is_part_of_letter = (U_GET_GC_MASK(next.character) & (U_GC_L_MASK | U_GC_M_MASK)) != 0;
    if (!is_part_of_letter && others.find(static_cast<char32_t>(next.character)) == others.npos) return false;
    text.remove_prefix(next.length);
  }
  return true;
}

std::string_view TrimBlanks(std::string_view text) {
  if (IsBlank(text)) return {};
  text.remove_prefix(BlanksLength(text));
  std::size_t end = 0;  // after the last character that is no blank
  for (std::size_t at = 0; at < text.size();) {
    const auto blanks = BlanksLength(text.substr(at));
    at += blanks > 0 ? blanks : FirstCharacter(text.substr(at)).length;
    if (blanks == 0) end = at;
  }
  return text.substr(0, end);
}

std::string OnOneLine(std::string_view text) {
  std::string line;
  while (!text.empty()) {
    const auto blanks = text.substr(0, BlanksLength(text));
    const auto length = blanks.empty() ? FirstCharacter(text).length : blanks.size();
    line += HasLineBreak(blanks) ? " " : text.substr(0, length);
    text.remove_prefix(length);
  }
  return line;
}

std::string Composed(std::string_view text) {
  if (IsAscii(text)) return std::string(text);
  return MapByIcu(text, [](icu::StringPiece source, icu::ByteSink& sink, icu::ErrorCode& error) {
    const auto* const composer = icu::Normalizer2::getNFCInstance(error);
    if (error.isSuccess()) composer->normalizeUTF8(0, source, sink, nullptr, error);
  });
}

std::string UpperCase(std::string_view text) {
  if (IsAscii(text)) return MapAscii(text, UpperAscii);
  return MapByIcu(text, [](icu::StringPiece source, icu::ByteSink& sink, icu::ErrorCode& error) {
    icu::CaseMap::utf8ToUpper(kRootLocale, 0, source, sink, nullptr, error);
  });
}

std::string LowerCase(std::string_view text) {
  if (IsAscii(text)) return MapAscii(text, LowerAscii);
  return MapByIcu(text, [](icu::StringPiece source, icu::ByteSink& sink, icu::ErrorCode& error) {
    icu::CaseMap::utf8ToLower(kRootLocale, 0, source, sink, nullptr, error);
  });
}

std::string FoldCase(std::string_view text) {
  if (IsAscii(text)) return MapAscii(text, LowerAscii);
  return MapByIcu(text, [](icu::StringPiece source, icu::ByteSink& sink, icu::ErrorCode& error) {
    icu::CaseMap::utf8Fold(0, source, sink, nullptr, error);
  });
}

std::weak_ordering CompareIgnoringCase(std::string_view left, std::string_view right) {
  const auto shorter = std::min(left.size(), right.size());
  std::size_t at = 0;
  for (; at < shorter && IsAscii(left[at]) && IsAscii(right[at]); ++at) {
    const auto order = OrderBytes(LowerAscii(left[at]), LowerAscii(right[at]));
    if (order != 0) return order;
  }
  // No character folds to nothing, so that the shorter text comes first where it is the other's start.
  if (at == shorter) return left.size() <=> right.size();
  return FoldCase(left.substr(at)) <=> FoldCase(right.substr(at));
}

std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to) {
  std::string replaced;
  replaced.reserve(text.size());
  for (std::size_t start = 0;;) {
    const auto found = text.find(from, start);
    replaced += text.substr(start, found - start);
    if (found == std::string_view::npos) return replaced;
    replaced += to;
    start = found + from.size();
  }
}

std::string Quoted(std::string_view text) {
  return '"' + std::string(text) + '"';
}

std::size_t CharacterCount(std::string_view text) {
  return text.size() - static_cast<std::size_t>(std::ranges::count_if(text, IsContinuation));
}

std::string_view FirstCharacters(std::string_view text, std::size_t count) {
  std::size_t end = 0;
  for (; end < text.size(); ++end) {
    if (!IsContinuation(text[end]) && count-- == 0) break;
  }
  return text.substr(0, end);
}

std::size_t ValidUtf8Length(std::string_view text) {
  std::size_t at = 0;
  while (at < text.size()) {
    const auto length = IsAscii(text[at]) ? 1 : CharacterLength(text.substr(at));
    if (length == 0) break;
    at += length;
  }
  return at;
}

}  // namespace platform
