#pragma once

#include <string>
#include <string_view>

namespace platform {

/// What the user typed or pasted, without the characters that no document can carry: control characters other
/// than tab and line ends (a word processor's own line break among them), and bytes that are not UTF-8.
std::string TypedText(std::string_view text);

/// The same for a value of one line, as it stands in a letter: without blanks at either end, its line breaks
/// (a word processor's own among them) and "||", which would end a paragraph, turned into blanks; "" where
/// nothing of it can be seen.
std::string TypedValue(std::string_view text);
/// The same for what is pasted into a line: blanks at its ends stay, line breaks there
/// go, and a letter with its accents is one
/// character wherever Unicode has one, so that a field's length counts what a reader would.
std::string PastedLine(std::string_view text);
/// Whether TypedValue makes one line of several.
bool HasLines(std::string_view text);

}  // namespace platform
