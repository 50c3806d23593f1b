#pragma once

#include "customers/customer_panel.h"
#include "platform/agreed/customer_record.h"
#include "platform/parties/services.h"
#include "workspace/messaging/page_index.h"

namespace customers {

using platform::SelectedCustomer;

/// Makes the customer chosen in a dialog the current one and shows it on the page (correspondence or
/// tracking).
///
/// Without a chosen customer the panel keeps its fields, the city line of the current customer is emptied and
/// the page's selection commands are enabled. Failures are reported.
void FillCustomerField(const platform::Services& services, const SelectedCustomer& chosen,
                       workspace::PageIndex page, CurrentCustomer& customer, CustomerPanel& panel);

}  // namespace customers
