#pragma once

#include <string>
#include <string_view>

namespace composition {

/// Whether a bookmark repeats a field that stands in the template already, as NAME__1 repeats NAME: what
/// follows the last "__" of the trimmed name is a number.
bool CheckDoubleUnderScore(std::string_view name);

/// Replaces in `text` the five predefined references by what they stand for, "&amp;" last: one level of
/// escaping goes.
void XmlEscapeDecode(std::string& text);

}  // namespace composition
