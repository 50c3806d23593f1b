#pragma once

#include <string>
#include <string_view>

#include "platform/xml/xml_escape.h"

/// The platform's escaping, under the names that this room uses.
namespace wordprocessor {

/// Appends `text` with what XML reserves escaped: for texts, and with `quotes` for attribute values.
inline void AppendEscaped(std::string& out, std::string_view text, bool quotes = false) {
  platform::AppendXmlEscaped(out, text, quotes ? platform::XmlPlace::kValue : platform::XmlPlace::kText);
}
/// The text behind escaped character data.
inline std::string Unescaped(std::string_view markup) {
  return platform::WithoutXmlEscapes(markup);
}

}  // namespace wordprocessor
