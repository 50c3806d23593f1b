#include "platform/controls/typed_text.h"

#include <algorithm>

#include "platform/paragraph_end.h"
#include "platform/text.h"
#include "platform/xml/xml_characters.h"

namespace platform {

std::string TypedText(std::string_view text) {
  std::string kept;
  while (!text.empty()) {
    const auto length = XmlCharactersLength(text);
    kept += text.substr(0, length);
    text.remove_prefix(std::min(length + 1, text.size()));  // and the byte that cannot stand there
  }
  return kept;
}

std::string TypedValue(std::string_view text) {
  // What no document carries goes first: it may part the two characters that end a paragraph.
  const auto typed = TypedText(OnOneLine(TrimBlanks(text)));
  const auto line = OnOneLine(ReplaceAll(typed, kParagraphEnd, "\n"));
  return std::string(TrimBlanks(line));
}

std::string PastedLine(std::string_view text) {
  // A cell or a line that was copied whole brings its end along.
  constexpr std::string_view kEnds = "\r\n\t";
  const auto start = text.find_first_not_of(kEnds);
  if (start == std::string_view::npos) return "";
  auto line = TypedText(OnOneLine(text.substr(start, text.find_last_not_of(kEnds) - start + 1)));
  std::ranges::replace(line, '\t', ' ');
  return Composed(line);
}

bool HasLines(std::string_view text) {
  const auto visible = TrimBlanks(text);
  return OnOneLine(visible) != visible || visible.find(kParagraphEnd) != std::string_view::npos;
}

}  // namespace platform
