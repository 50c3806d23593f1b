#pragma once

#include "server/wire/exchange.h"

namespace server {

/// Answers the inquiry for the template folder: a record "XML_Context" with the folder in L_TEMPLATE_PATH.
/// Throws Failure kRefused for any other inquiry.
void AnswerTemplateFolder(Exchange& exchange);

}  // namespace server
