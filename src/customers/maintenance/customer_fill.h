#pragma once

#include <string>

#include "customers/maintenance/cust_maint.h"
#include "platform/parties/services.h"
#include "platform/record_set.h"

namespace customers {

/// Copies a customer of the record "Customer", its current row, into the dialog. A null is an empty text.
/// Names of a customer whom another part of the administration keeps as well cannot be changed, but for the
/// last name.
void MoveCustomerEditInfo(const platform::Services& services, const platform::RecordSet& rows,
                          ZEMLO_CustMaint& form);

/// The county's name in the local reference database; "" for a code it has not. A failure is reported, and
/// the name is "" then: a caption keeps no customer from being maintained.
std::string GetCountyDescription(const platform::Services& services, const std::string& code);

}  // namespace customers
