#pragma once

#include <array>

#include "server/wire/exchange.h"

namespace server {

/// The criteria by which letters are searched.
inline constexpr auto kLetterSearchKeys = std::to_array<KnownKey>({
    {"LTR_TYP_ID"},
    {"CUST_ID"},
    {"FORM_NBR"},
    {"FORM_CK_DGT_NBR"},
    {"FORM_TYP_CD"},
    {"LETTER_TYPE"},
    {"TRP_ID"},
    {"TRP_DIST_ID"},
    {"START_DT", "=", "between"},
    {"BATCH_NBR"},
    {"THIN"},
});

/// Answers with a record "CORRHIST" of the letters that meet every criterion, by their times (kLetterTime);
/// with no record where there is none. Beside the record's columns each has CUST_NM, its customer's name.
///
/// LETTER_TYPE is Succeeded, Failed (status "F" or "R") or All. START_DT is about whole days of a letter's
/// time. Criteria with an empty value are left out. THIN "YES" leaves the letters' contexts out.
///
/// Throws Failure kRefused for a value that a criterion cannot have, and where more letters are found than a
/// reply should bring.
void AnswerLetterSearch(Exchange& exchange);

}  // namespace server
