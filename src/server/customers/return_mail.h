#pragma once

#include <string>

#include "server/customers/given_customer.h"
#include "server/wire/exchange.h"

namespace server {

/// Answers the key RETURNMAIL: marks the address that this letter was sent to as one that mail comes back
/// from, as a change of its customer, and notes the letter, the day and the user. Record "RETURN_MAIL" says
/// in a sentence what came of it. Nothing is marked where the letter is gone, was not printed, its address is
/// not known, or has been changed since it was made. Decision [returned-mail].
void AnswerReturnMail(Exchange& exchange);

/// What came back from an address of a customer is over once the address carries no mark and may be used
/// again. `after`: the customer as it is stored now.
void ClearReturnedMail(Exchange& exchange, const std::string& customer, const CustomerValues& after);

}  // namespace server
