#pragma once

#include "server/wire/exchange.h"

namespace server {

/// Answers with the forms of the customer CUST_ID that are of the type REF_TYP_CD, by their numbers: record
/// "CUSTOMERFORM". Where there are none there is no record. What the list makes of them (FORM_NUMBER,
/// CTTN_STTS_TXT) stays null. Throws Failure kRefused where a key is missing.
void AnswerCustomerForms(Exchange& exchange);

}  // namespace server
