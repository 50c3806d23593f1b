#include "platform/xml/xml_cursor.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/text.h"
#include "platform/xml/xml_characters.h"

namespace platform {
namespace {

constexpr ByteSet kSpace(kXmlSpace);
constexpr ByteSet kSingleQuotedStops("'<&");
constexpr ByteSet kDoubleQuotedStops("\"<&");
constexpr auto kEntities = std::to_array<std::string_view>({"amp", "lt", "gt", "apos", "quot"});

/// Line and column (in characters) of the byte `at`; lines end as XML 1.0, 2.11, has it.
void Locate(std::string_view text, std::size_t at, XmlParseError& error) {
  std::size_t line_start = 0;
  error.line = 1;
  for (std::size_t i = 0; i < at; ++i) {
    const bool ends_line = text[i] == '\n' || (text[i] == '\r' && !text.substr(i + 1).starts_with('\n'));
    if (!ends_line) continue;
    ++error.line;
    line_start = i + 1;
  }
  error.column = CharacterCount(text.substr(line_start, at - line_start)) + 1;
}

/// The number that `digits` write; one beyond all characters where it is too large for one.
char32_t CharacterOf(std::string_view digits, char32_t base) {
  char32_t character = 0;
  for (const char digit : digits) {
    const auto value = digit <= '9' ? digit - '0' : (digit | 0x20) - 'a' + 10;
    character = std::min<char32_t>(character * base + static_cast<char32_t>(value), 0x11'0000);
  }
  return character;
}

}  // namespace

std::string XmlQuoted(std::string_view text) {
  constexpr std::size_t kShown = 40;
  const auto start = FirstCharacters(text, kShown);
  return "\"" + std::string(start) + (start.size() < text.size() ? "...\"" : "\"");
}

bool XmlCursor::SkipSpace() {
  const auto start = at_;
  while (!AtEnd() && kSpace.Holds(text_[at_])) ++at_;
  return at_ > start;
}

bool XmlCursor::ReadName(std::string_view& name) {
  name = text_.substr(at_, XmlNameLength(text_.substr(at_)));
  if (name.empty())
    return FailHere(XmlFault::kName, "A name has to stand here. Write a plain \"<\" as \"&lt;\".");
  at_ += name.size();
  return true;
}

bool XmlCursor::ReadValue(std::string_view& value) {
  if (!LooksAt("\"") && !LooksAt("'")) return FailHere(XmlFault::kAttribute, "A value in quotes is missing.");
  const char quote = text_[at_];
  const auto& stops = quote == '"' ? kDoubleQuotedStops : kSingleQuotedStops;
  for (const auto start = ++at_;;) {
    at_ = stops.FindIn(text_, at_);
    if (AtEnd()) return Fail(XmlFault::kUnfinished, "The document ends in the middle of a value.", at_);
    if (text_[at_] == '<') return FailHere(XmlFault::kAttribute, "\"<\" stands in a value. Write \"&lt;\".");
    if (text_[at_] == quote) {
      value = text_.substr(start, at_++ - start);
      return true;
    }
    if (!ReadReference()) return false;
  }
}

bool XmlCursor::ReadReference() {
  const auto start = at_++;
  if (Take("#")) return ReadCharacterReference();
  const auto name = text_.substr(at_, XmlNameLength(text_.substr(at_)));
  at_ += name.size();
  if (name.empty() || !Take(";")) {
    return Fail(XmlFault::kReference, "\"&\" starts no reference here. Write \"&amp;\".", start);
  }
  if (std::ranges::find(kEntities, name) != kEntities.end()) return true;
  return Fail(XmlFault::kReference, "The entity " + XmlQuoted(name) + " is not declared.", start);
}

bool XmlCursor::ReadCharacterReference() {
  const auto start = at_ - 2;
  const bool hexadecimal = Take("x");
  const auto end = text_.find_first_not_of(hexadecimal ? "0123456789abcdefABCDEF" : "0123456789", at_);
  const auto digits = text_.substr(at_, end - at_);
  at_ += digits.size();
  if (digits.empty() || !Take(";")) {
    return Fail(XmlFault::kReference, "A character reference needs digits and \";\".", start);
  }
  if (IsXmlCharacter(CharacterOf(digits, hexadecimal ? 16 : 10))) return true;
  return Fail(XmlFault::kReference, "A character is referred to that XML does not allow.", start);
}

bool XmlCursor::Fail(XmlFault fault, std::string reason, std::size_t at) {
  fault_ = fault;
  reason_ = std::move(reason);
  fault_at_ = at;
  return false;
}

bool XmlCursor::FailHere(XmlFault fault, std::string reason) {
  if (AtEnd()) return Fail(XmlFault::kUnfinished, "The document ends in the middle of a tag.", at_);
  return Fail(fault, std::move(reason), at_);
}

XmlParseError XmlCursor::Error() const {
  XmlParseError error;
  error.code = static_cast<int>(fault_);
  error.reason = reason_;
  Locate(text_, fault_at_, error);
  return error;
}

}  // namespace platform
