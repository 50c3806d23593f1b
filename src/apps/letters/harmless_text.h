#pragma once

#include <string>
#include <string_view>

namespace apps {

/// `text` without what could work a terminal or deceive its reader: control characters and those that turn
/// the direction of writing become "\u001b", bytes that are not UTF-8 "\xff". Line breaks and tabs stay.
std::string Harmless(std::string_view text);

/// The same for a cell of a table: line breaks and tabs are told as well ("\u000a").
std::string HarmlessCell(std::string_view text);

/// The same for XML: such characters become character references, which mean the same.
std::string WithReferences(std::string_view xml);

/// How many bytes at the end of `text` may be the beginning of a character whose rest is still to come.
std::size_t UnfinishedAtEnd(std::string_view text);

}  // namespace apps
