#pragma once

#include <string>
#include <string_view>

namespace workspace {

enum class TagForm {
  kExact,           ///< <TAG>, without regard to case
  kWithAttributes,  ///< <TAG ...>, to the letter
};

/// What the first element of that name holds, in a text that need not be XML; "" when there is none, or when
/// its end is missing.
///
/// In the form with attributes the value ends at the first closing tag of the whole text; one that stands
/// before the opening tag gives "".
std::string ReadTag(std::string_view text, std::string_view tag, TagForm form);

}  // namespace workspace
