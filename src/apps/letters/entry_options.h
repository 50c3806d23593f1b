#pragma once

#include <string>

#include "apps/letters/command_line.h"
#include "apps/letters/headless_office.h"

/// What the command line says for the user of a letter that asks for values and paragraphs.
namespace apps {

/// --set, --paragraph and --free-text.
void AddEntryOptions(CommandLine& line);
/// What is wrong with them; "" where nothing is.
std::string EntryOptionFault(const CommandLine& line);
LetterEntries EntriesOf(const CommandLine& line);

/// Throws Failure kRefused where the letter that was made asked for nothing: entries are never dropped.
void RefuseUnusedEntries(const HeadlessOffice& office);

}  // namespace apps
