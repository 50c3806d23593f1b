#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "customers/display_encoders.h"
#include "customers/selected_customer.h"
#include "platform/record_set.h"
#include "platform/search_text.h"

namespace customers {

/// A customer whom the customer select control offers.
struct FoundCustomer {
  SelectedCustomer values = {};  ///< as a page shows them
};

/// The rows of a record "CUSTOMER", in their order.
std::vector<FoundCustomer> ReadFoundCustomers(const platform::RecordSet& records,
                                              const DisplayEncoders& encoders);

/// What a list of customers shows of each.
enum class FoundColumn { kName, kCity, kAccount, kPhone };
inline constexpr std::size_t kFoundColumns = 4;

std::string_view CaptionOf(FoundColumn column);

/// A text of the list, and the parts of it that a typed text has met: what is shown bold.
struct FoundCell {
  std::string text;
  std::vector<platform::TextRange> met;
};
FoundCell CellOf(const FoundCustomer& customer, FoundColumn column, std::string_view typed);

}  // namespace customers
