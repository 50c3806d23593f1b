#pragma once

#include <string>

#include "apps/letters/command_line.h"
#include "apps/letters/headless_office.h"

/// The letter a command line asks for: its type, its customer, the document it is about.
namespace apps {

/// --data, --type, --customer, --form-type and --form.
void AddLetterOptions(CommandLine& line);
/// What is wrong with them; "" where nothing is.
std::string LetterOptionFault(const CommandLine& line);

/// Fills the correspondence page in as a user does and clicks "Create Letter". What keeps that disabled is
/// the refusal. Returns when nothing is under way any more.
void AskForLetter(HeadlessOffice& office, const CommandLine& line);

}  // namespace apps
