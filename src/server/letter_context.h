#pragma once

#include <vector>

#include "server/address_verdict.h"
#include "server/context_field.h"
#include "server/letter_fields.h"
#include "server/letter_subject.h"

namespace server {

/// The data context of a letter: the inputs first (CUST_ID, FORM_NBR, FORM_TYP_CD), then CUSTOMER_NAME and
/// CUSTOMER_ADDR where the letter's own fields have none, then those fields in their order. Errors are
/// summarised up to the root, which also says whether the user has something to enter or to choose.
///
/// `with_values` false leaves every value out: the letter's fields alone, none of them in error.
ContextField BuildLetterContext(const LetterSubject& subject, const std::vector<LetterField>& fields,
                                const AddressVerdict& verdict, bool with_values);

}  // namespace server
