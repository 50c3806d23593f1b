#pragma once

#include <array>

#include "platform/agreed/requests.h"
#include "server/wire/exchange.h"

namespace server {

/// The criteria by which letters are searched.
inline constexpr auto kLetterSearchKeys = std::to_array<KnownKey>({
    {platform::request_key::kLetterType},
    {platform::request_key::kCustomer},
    {platform::request_key::kFormNumber},
    {platform::request_key::kCheckDigit},
    {platform::request_key::kFormType},
    {platform::request_key::kOutcome},
    {platform::request_key::kTroop},
    {platform::request_key::kDistrict},
    {platform::request_key::kDays, "=", platform::key_operator::kBetween},
    {platform::request_key::kBatch},
    {platform::request_key::kLetters},
    {platform::request_key::kThin},
});

/// Answers with a record "CORRHIST" of the letters that meet every criterion, by their times (kLetterTime);
/// with no record where there is none. Beside the record's columns each has CUST_NM, its customer's name.
///
/// LETTER_TYPE is Succeeded, Failed (status "F" or "R") or All. START_DT is about whole days of a letter's
/// time. SEQ_NBRS names letters by their numbers; those that are not there are left out. Criteria with an
/// empty value are left out. THIN "YES" leaves the letters' contexts out.
///
/// Throws Failure kRefused for a value that a criterion cannot have, and where more letters are found than a
/// reply should bring.
void AnswerLetterSearch(Exchange& exchange);

}  // namespace server
