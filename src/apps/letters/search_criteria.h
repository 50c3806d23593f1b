#pragma once

#include <optional>
#include <string>

#include "apps/letters/command_line.h"
#include "apps/letters/headless_office.h"

/// The criteria of "Search Letter (s)" as options of a command.
namespace apps {

void AddCriteria(CommandLine& line);

/// What is wrong with a criterion by itself; nothing where none is.
std::optional<std::string> CriterionFault(const CommandLine& line);

/// The same for the days of --from and --to alone.
std::optional<std::string> DayFault(const CommandLine& line);

/// Fills the tracking page's criteria and searches; the page lists what is found. Throws Failure kRefused for
/// a value that a field does not take; what the page refuses is office.refused().
void SearchLetters(HeadlessOffice& office, const CommandLine& line);

}  // namespace apps
