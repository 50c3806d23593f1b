#pragma once

#include "server/wire/exchange.h"

namespace server {

/// Answers the record "XML_CONTEXT_INPUT": a record "XML_Context" with the letter's data context, and a
/// record "CORRHIST" with what the letter's history will need: status "V" where the customer's addresses keep
/// the letter from being sent, "E" where anything else in it is in error, "P" where it can be printed.
///
/// POPULATE_LTR_BOOKMARKS "N" leaves the values out; EMITFIELDDESCRIPTORS and EXPLAINSTATE "Y" add the
/// explanations. Throws Failure kNotFound for a letter type, customer or form that is not there, kRefused for
/// an input that names nothing or contradicts itself.
void AnswerContext(Exchange& exchange);

}  // namespace server
