#pragma once

#include <string>

#include "platform/agreed/customer_record.h"

namespace customers {

/// Which of a customer's addresses mail came back from, in a sentence; "" for none.
std::string ReturnedMailText(const platform::ReturnedMail& returned);

}  // namespace customers
