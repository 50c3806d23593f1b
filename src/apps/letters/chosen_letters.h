#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "apps/letters/command_line.h"
#include "apps/letters/headless_office.h"

/// The letters that a command acts on: named by their numbers, or found by the criteria of the search.
namespace apps {

/// --letter N ... | --from-search and the criteria; --dry-run.
void AddLetterChoice(CommandLine& line);
/// What is wrong with these options; nothing where nothing is.
std::optional<std::string> LetterChoiceFault(const CommandLine& line);

/// Lists these letters on the tracking page. Throws Failure kRefused where one of --letter is not in the
/// history: nothing is done then to the others either.
void ListLetters(HeadlessOffice& office, const std::vector<std::int64_t>& numbers);
/// Selects rows of the tracking page's list, and waits for what the page asks about them: whose letter it is.
void SelectRows(HeadlessOffice& office, std::vector<std::size_t> rows);
/// Selects all rows.
void SelectAllRows(HeadlessOffice& office);
/// Lists the letters that the options choose, and selects them all. Returns how many there are; what the page
/// refuses is office.refused().
std::size_t ChooseLetters(HeadlessOffice& office, const CommandLine& line);

/// Writes for each letter listed whether the option of OptLetter would be done to it, and why not
/// (--dry-run).
void TellWhatWouldBeDone(HeadlessOffice& office, std::size_t option, const CommandLine& line);

/// Clicks the option of OptLetter for the selected letters, and waits for what comes of it. Throws Failure
/// kRefused with the reason where they do not allow it.
void ActOnLetters(HeadlessOffice& office, std::size_t option);

}  // namespace apps
