#pragma once

#include <functional>
#include <vector>

#include "server/context/context_field.h"
#include "server/context/field_queries.h"
#include "server/context/letter_fields.h"
#include "server/subject/address_verdict.h"
#include "server/subject/letter_subject.h"

namespace server {

/// Runs the query of a field.
using FieldQueryRunner = std::function<FieldFinding(const LetterField& field)>;

/// The data context of a letter: the inputs first (CUST_ID, FORM_NBR, FORM_TYP_CD), then CUSTOMER_NAME and
/// CUSTOMER_ADDR where the letter's own fields have none, then those fields in their order. Errors are
/// summarised up to the root, which also says whether the user has something to enter or to choose.
///
/// `run_query` finds the fields that come from queries; without it they are in error.
/// `with_values` false leaves every value out: the letter's fields alone, none of them in error.
ContextField BuildLetterContext(const LetterSubject& subject, const std::vector<LetterField>& fields,
                                const AddressVerdict& verdict, bool with_values,
                                const FieldQueryRunner& run_query = {});

}  // namespace server
