#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "server/wire/exchange.h"

namespace server {

/// Records letters: each row of the record "CORRHIST" says with its ACTION whether a letter is new ("ADD") or
/// has been printed again ("UPD"). The reply's "CORRHIST" holds each letter as it is stored, with the SEQ_NBR
/// it was given, without its context. With the key FETCHCONTEXT the reply brings that letter's context, too;
/// where it cannot, the reply says so and the letters are recorded all the same.
///
/// A letter recorded as printed (status "F" with the time 1900-01-01 01.01.01) gets the server's own time and
/// the status of a printed letter; one whose processing failed ("F" or "R") stays failed when it is printed.
///
/// A message that has recorded its letters changes nothing when it comes again, however much later; the reply
/// then holds the letters as they are stored now.
///
/// Throws Failure kRefused for a row that cannot be recorded, kNotFound for a letter, customer or form that
/// is not there.
void RecordLetters(Exchange& exchange);

/// Keeps which letters a message has recorded, one for each of its rows.
void StoreLetterMessage(Database& database, const std::string& message_key,
                        const std::vector<std::int64_t>& letters);

/// Answers the key FETCHCONTEXT with the stored context of that letter: record "XML_CONTEXT". Beside it,
/// where the letter has a customer, record "CUSTOMER" with CUST_ID, MAIL_RTND_IND and RES_RTND_IND as they
/// are now. The explanations come with it where EMITFIELDDESCRIPTORS and EXPLAINSTATE ask for them. Throws
/// Failure kNotFound for a letter that is not there.
void AnswerStoredContext(Exchange& exchange);

}  // namespace server
