#pragma once

#include <string>

#include "customers/customer_panel.h"
#include "platform/parties/services.h"
#include "workspace/messaging/page_index.h"

namespace customers {

/// Has the user choose the customer of a page. No failure leaves it.
class CustomerSelection {
 public:
  /// All references outlive this.
  CustomerSelection(const platform::Services& services, const std::string& message_title,
                    CurrentCustomer& customer)
      : services_(services), message_title_(message_title), customer_(customer) {}

  /// Opens the search under that caption, and returns when it has closed. The customer chosen is shown on the
  /// page, whose two selection commands stay disabled then until the page is cleared; they are enabled again
  /// when none was chosen.
  void Select(const std::string& caption, workspace::PageIndex page, CustomerPanel& panel);

 private:
  const platform::Services& services_;
  const std::string& message_title_;
  CurrentCustomer& customer_;
};

}  // namespace customers
