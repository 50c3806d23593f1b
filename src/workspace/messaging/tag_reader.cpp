#include "workspace/messaging/tag_reader.h"

#include <algorithm>
#include <cstddef>

namespace workspace {

namespace {

using std::string_view;

char InLowerCase(char letter) {
  // Tag names are ASCII; other bytes are compared as they are.
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

std::size_t FindIgnoringCase(string_view text, string_view part, std::size_t from = 0) {
  const auto found =
      std::search(text.begin() + static_cast<std::ptrdiff_t>(from), text.end(), part.begin(), part.end(),
                  [](char left, char right) { return InLowerCase(left) == InLowerCase(right); });
  return found == text.end() ? string_view::npos : static_cast<std::size_t>(found - text.begin());
}

std::string Between(string_view text, std::size_t start, std::size_t end) {
  if (start == string_view::npos || end == string_view::npos || end < start) return "";
  return std::string(text.substr(start, end - start));
}

std::string ReadExact(string_view text, string_view opening_tag, string_view closing_tag) {
  const auto opening = FindIgnoringCase(text, opening_tag);
  if (opening == string_view::npos) return "";
  const auto start = opening + opening_tag.size();
  return Between(text, start, FindIgnoringCase(text, closing_tag, start));
}

std::string ReadWithAttributes(string_view text, string_view opening_tag, string_view closing_tag) {
  const auto opening = text.find(opening_tag);
  if (opening == string_view::npos) return "";
  const auto bracket = text.find('>', opening);
  if (bracket == string_view::npos) return "";
  return Between(text, bracket + 1, text.find(closing_tag));
}

}  // namespace

std::string ReadTag(string_view text, string_view tag, TagForm form) {
  const auto opening = "<" + std::string(tag);
  const auto closing = "</" + std::string(tag) + ">";
  return form == TagForm::kExact ? ReadExact(text, opening + ">", closing)
                                 : ReadWithAttributes(text, opening, closing);
}

}  // namespace workspace
