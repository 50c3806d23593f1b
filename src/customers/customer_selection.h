#pragma once

#include <functional>
#include <string>

#include "customers/clear_cust_form.h"
#include "customers/customer_maintenance.h"
#include "customers/customer_panel.h"
#include "platform/parties/services.h"
#include "workspace/messaging/letter_request_fields.h"
#include "workspace/messaging/page_index.h"

namespace customers {

/// The form (account) that was picked for a page.
struct PickedForm {
  std::string form_type;    ///< its code
  std::string form_number;  ///< with its check digit: "0001234-5"
};

/// Has the user choose the customer of a page, alone or with one of the customer's accounts. No failure
/// leaves it.
///
/// The customer chosen is shown on the page, whose two selection commands stay disabled then until the page
/// is cleared; they are enabled again when none was chosen.
class CustomerSelection {
 public:
  /// All of it outlives the selection.
  struct Uses {
    const platform::Services& services;
    const std::string& message_title;
    CurrentCustomer& customer;
    /// The request fields of a page.
    std::function<workspace::LetterRequestFields&(workspace::PageIndex page)> request_of;
    CustomerMaintenance maintenance;
    /// Shows the form on the page.
    std::function<void(workspace::PageIndex page, const PickedForm& form)> fill_form_info;
  };
  explicit CustomerSelection(Uses uses) : uses_(std::move(uses)) {}

  /// "Select Customer". Each returns when its dialog has closed.
  void SelectCustomer(workspace::PageIndex page, CustomerPanel& panel);
  /// "Select Account". The account type it leaves with is offered next time, on either page. Cancelling
  /// clears the page.
  void SelectAccount(workspace::PageIndex page, const CustomerForm& form);

 private:
  void TakeAccount(workspace::PageIndex page, const CustomerForm& form);

  const Uses uses_;
  std::string account_type_;  // chosen last; "" while none was
};

}  // namespace customers
