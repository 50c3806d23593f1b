#pragma once

#include <string>
#include <string_view>

namespace platform {

/// `text` as it stands inside an element: "&", "<" and ">" as references.
std::string XmlEscaped(std::string_view text);

/// Appends `text` so that it reads back the same: as the text of an element, with the carriage returns that a
/// reader would take for line feeds, or as an attribute's value, with quotes and all white space.
enum class XmlPlace { kText, kValue };
void AppendXmlEscaped(std::string& out, std::string_view text, XmlPlace place);
/// The text behind what AppendXmlEscaped wrote. Everything else stays.
std::string WithoutXmlEscapes(std::string_view markup);

/// The five predefined references replaced by what they stand for, "&amp;" last: one level of escaping goes.
/// Everything else stays, a lone "&" too.
std::string XmlUnescaped(std::string_view text);

}  // namespace platform
