#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "customers/display_encoders.h"
#include "customers/selected_customer.h"
#include "platform/controls/grid.h"
#include "platform/record_set.h"

namespace customers {

// Customers that a search has found, as a grid lists them: a column for each value of the customer select
// control, as a page shows it, and the city the customer is known by.

std::vector<platform::Grid::Column> FoundCustomerColumns();

/// `records`: the rows of a record "CUSTOMER"; their order is kept.
std::shared_ptr<platform::RecordSet> ListCustomers(const platform::RecordSet& records,
                                                   const DisplayEncoders& encoders);

/// A row of ListCustomers.
SelectedCustomer CustomerAt(const platform::RecordSet& found, std::size_t row);

}  // namespace customers
