#pragma once

#include <cstdint>

#include "server/subject/letter_subject.h"
#include "server/wire/exchange.h"

namespace server {

/// Has the coming batch make those letters of a customer again whose address was to blame and has been
/// corrected; returns their number. `before` and `after` are the customer around the correction, which is
/// stored. Decision [corrected-letters].
std::int64_t RescheduleCorrectedLetters(Exchange& exchange, const Customer& before, const Customer& after);

}  // namespace server
