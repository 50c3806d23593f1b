#pragma once

#include <string>

#include "customers/customer_panel.h"
#include "platform/parties/services.h"
#include "workspace/messaging/page_index.h"

namespace customers {

/// What the customer select control shows of the chosen customer. An empty `CustID` means that none was
/// chosen.
struct SelectedCustomer {
  std::string CustID = {};
  std::string CUSTNAME = {};
  std::string MailAddress = {};
  std::string MailAddress2 = {};
  std::string MailCity = {};
  std::string MailState = {};
  std::string MailZip = {};
  std::string ResAddress = {};
  std::string ResAddress2 = {};
  std::string ResCity = {};
  std::string ResState = {};
  std::string ResZip = {};
  std::string Phone = {};
  std::string FuelTax = {};
};

/// Makes the customer chosen in a dialog the current one and shows it on the page (correspondence or
/// tracking).
///
/// Without a chosen customer the panel keeps its fields, the city line of the current customer is emptied and
/// the page's selection commands are enabled. Failures are reported.
void FillCustomerField(const platform::Services& services, const SelectedCustomer& chosen,
                       workspace::PageIndex page, CurrentCustomer& customer, CustomerPanel& panel);

}  // namespace customers
