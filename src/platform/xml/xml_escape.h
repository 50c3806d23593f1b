#pragma once

#include <string>
#include <string_view>

namespace platform {

/// `text` as it stands inside an element: "&", "<" and ">" as references.
std::string XmlEscaped(std::string_view text);

/// The five predefined references replaced by what they stand for, "&amp;" last: one level of escaping goes.
/// Everything else stays, a lone "&" too.
std::string XmlUnescaped(std::string_view text);

}  // namespace platform
