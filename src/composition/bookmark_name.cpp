#include "composition/bookmark_name.h"

#include <algorithm>

#include "platform/text.h"
#include "platform/xml/xml_escape.h"

namespace composition {

bool CheckDoubleUnderScore(std::string_view name) {
  constexpr std::string_view kMark = "__";
  const auto trimmed = platform::Trim(name);
  const auto place = trimmed.rfind(kMark);
  if (place == std::string_view::npos) return false;
  const auto number = trimmed.substr(place + kMark.size());
  return !number.empty() && std::ranges::all_of(number, [](char c) { return c >= '0' && c <= '9'; });
}

void XmlEscapeDecode(std::string& text) {
  text = platform::XmlUnescaped(text);
}

}  // namespace composition
