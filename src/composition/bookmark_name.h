#pragma once

#include <string>
#include <string_view>

namespace composition {

/// Whether the trimmed name is that of a repeat, as platform::IsRepeat says.
bool CheckDoubleUnderScore(std::string_view name);

/// Replaces in `text` the five predefined references by what they stand for, "&amp;" last: one level of
/// escaping goes.
void XmlEscapeDecode(std::string& text);

}  // namespace composition
