#pragma once

#include <vector>

#include "server/wire/exchange.h"

namespace server {

/// Takes the record "Customer" as a new customer ("ADD") or as a change of one ("UPD", with the number of the
/// change that it was made from in the key UPDT_NBR).
///
/// Every address that is new or changed was verified. With "F" behind the action all of them have to have
/// passed; otherwise nothing is stored, and the record "Customer" brings back the verdict with what is
/// suggested. What passed is stored as it was standardised, anything else as it was sent and marked as
/// failed. Stored, the record "Customer" names the customer, and "XML_ROW" the number of letters that the
/// corrected address lets go out.
///
/// Throws Failure kPermissionDenied where the user may not do that, kNotFound where the customer has gone,
/// kRefused for a change made from an older state, naming who changed what when, and for a value that breaks
/// a rule, an accepted suggestion (FINALIST_ACCEPT) that does not pass among them. Decision [verified-saves].
void SaveCustomer(Exchange& exchange);

/// The addresses that SaveCustomer wants to be verified. Throws what it throws.
std::vector<platform::PostalAddress> AddressesToVerify(Exchange& exchange);

}  // namespace server
