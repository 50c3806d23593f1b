#pragma once

#include <string>

#include "apps/letters/headless_office.h"

/// What a user does on a page, done by a command. A refusal is a Failure kRefused with the text to show.
namespace apps {

[[noreturn]] void Refuse(const std::string& text);

/// Opens the list and picks the row with that code.
void Pick(composition::ZEMLO_LetterCombo& list, const std::string& code, const std::string& refusal);
/// Refuses a letter type that the list has not, and says why; `way_out` follows for a letter that only the
/// system makes.
void RequireLetterType(HeadlessOffice& office, composition::ZEMLO_LetterCombo& list, const std::string& type,
                       const std::string& way_out = "");

/// Types into the field, key by key: a key that the field does not take is the refusal. `option` names where
/// the text came from.
void Type(platform::TextField& field, const std::string& text, const std::string& option);

/// Chooses the customer for the page.
void ChooseCustomer(HeadlessOffice& office, const std::string& id, workspace::PageIndex page);

/// What keeps the command disabled is the refusal.
void RequireEnabled(const platform::Control& command);

}  // namespace apps
