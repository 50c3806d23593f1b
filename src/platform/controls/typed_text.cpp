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

bool HasLines(std::string_view text) {
  const auto visible = TrimBlanks(text);
  return OnOneLine(visible) != visible || visible.find(kParagraphEnd) != std::string_view::npos;
}

}  // namespace platform
