#include "platform/controls/typed_text.h"

#include <algorithm>

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
  const auto typed = TypedText(OnOneLine(TrimBlanks(text)));
  return std::string(TrimBlanks(typed));
}

}  // namespace platform
