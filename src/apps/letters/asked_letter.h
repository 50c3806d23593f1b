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
/// The same for a letter that is made: it is written to a customer or about a document, never both.
std::string SubjectFault(const CommandLine& line);

/// Fills the correspondence page in as a user does and clicks "Create Letter". What keeps that disabled is
/// the refusal. Returns when nothing is under way any more.
void AskForLetter(HeadlessOffice& office, const CommandLine& line);

/// A notice that names the bookmarks of its template that nothing filled, where there are any.
void TellNotFilled(const HeadlessOffice& office);

}  // namespace apps
