#pragma once

#include <optional>
#include <string>

#include "customers/customer_panel.h"
#include "platform/xml/xml.h"

namespace customers {

/// The customer that a letter's data context names; nothing for what it leaves out.
struct ContextCustomer {
  std::optional<std::string> id = {};
  std::optional<std::string> name = {};
  std::optional<std::string> address = {};  ///< lines separated by line feeds, the last one the city line
};

ContextCustomer ReadContextCustomer(const platform::XmlDocument& context);

/// Makes the address the current customer's and shows it on the panel. An address of one line leaves the city
/// line as it is.
void ShowContextAddress(const std::string& address, CurrentCustomer& customer, CustomerPanel& panel);

/// Another customer is about to be shown: the panel shows its id and nothing of the one before, until the
/// server has told more.
void ShowCustomerIdOnly(const std::string& id, CurrentCustomer& customer, CustomerPanel& panel);

/// Makes this the current customer and shows it. Nothing of the customer before stays: what a context does
/// not tell (phone, account) is empty.
void ShowContextCustomer(const ContextCustomer& named, CurrentCustomer& customer, CustomerPanel& panel);

}  // namespace customers
