#pragma once

#include <string>
#include <string_view>

namespace platform {

/// What the user typed or pasted, without the characters that no document can carry: control characters other
/// than tab and line ends (a word processor's own line break among them), and bytes that are not UTF-8.
std::string TypedText(std::string_view text);

}  // namespace platform
