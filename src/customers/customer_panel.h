#pragma once

#include <string>

#include "platform/agreed/customer_record.h"
#include "platform/controls/command.h"
#include "platform/controls/label.h"

namespace customers {

/// The customer shown on a page, and the two ways to choose another one.
struct CustomerPanel {
  platform::Label name;
  platform::Label address;
  platform::Label city_line;
  platform::Label phone;
  platform::Label fuel_tax_account;
  platform::Label customer_id;
  platform::Command select_customer{"Select Customer"};
  platform::Command select_account{"Select Account"};

  /// Which of the customer's addresses mail came back from; "" for none. Decision [returned-mail-shown].
  platform::Label returned_mail;

  /// Empties the six display fields, and the mark of returned mail.
  void ClearFields();
  void EnableSelection(bool enabled);

  void ShowReturnedMail(const platform::ReturnedMail& returned);
  /// A further address of the customer shown.
  void AddReturnedMail(const platform::ReturnedMail& returned);

 private:
  platform::ReturnedMail returned_;
};

/// The customer that the user works with; every text is empty when absent.
struct CurrentCustomer {
  std::string CustomerId = {};
  std::string CustomerName = {};   ///< as chosen; after an inquiry as a label takes it, "&&" for an ampersand
  std::string CustomerAddr1 = {};  ///< after an inquiry the second line as well
  std::string CustomerAddr2 = {};
  std::string CustomerCityLine = {};
  std::string CustomerPhone = {};
  std::string CustomerFuelTaxAcct = {};
  /// The tracking page shows a customer the user picked: choosing a letter does not change it.
  bool TrackingCustomerFixed = false;

  /// Forgets the customer; whether the tracking page's is fixed stays.
  void Clear();
};

}  // namespace customers
