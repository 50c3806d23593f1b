#include "customers/customer_selection.h"

#include "customers/customer_search.h"
#include "customers/selected_customer.h"

namespace customers {

void CustomerSelection::Select(const std::string& caption, workspace::PageIndex page, CustomerPanel& panel) {
  SelectedCustomer chosen;  // nobody, also where the search cannot be shown
  platform::Trap(services_, "ZEMLO_Correspondence.SelectCustomer", [&] {
    panel.EnableSelection(false);
    frmCustSearch search(services_, caption, message_title_);
    services_.host.ShowModal(search);
    chosen = search.chosen();
  });
  FillCustomerField(services_, chosen, page, customer_, panel);
  services_.status.ShowStatus("Ready");
}

}  // namespace customers
