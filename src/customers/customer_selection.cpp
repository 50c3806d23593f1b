#include "customers/customer_selection.h"

#include "customers/frm_cust_select.h"
#include "customers/select_cust_form_inq.h"
#include "customers/selected_customer.h"
#include "platform/agreed/form_numbers.h"

namespace customers {

void CustomerSelection::SelectCustomer(workspace::PageIndex page, CustomerPanel& panel) {
  const auto& services = uses_.services;
  SelectedCustomer chosen;  // nobody, also where the dialog cannot be shown
  platform::Trap(services, "ZEMLO_Correspondence.SelectCustomer", [&] {
    panel.EnableSelection(false);
    frmCustSelect dialog(services, uses_.maintenance);
    services.host.ShowModal(dialog);
    chosen = dialog.ZEMLO_CustSelect1.chosen();
    dialog.Dismiss();
  });
  FillCustomerField(services, chosen, page, uses_.customer, panel);
  services.status.ShowStatus("Ready");
}

void CustomerSelection::SelectAccount(workspace::PageIndex page, const CustomerForm& form) {
  const bool is_shown = platform::Trap(uses_.services, "ZEMLO_Correspondence.SelectAccount", [&] {
    form.panel.EnableSelection(false);
    TakeAccount(page, form);
  });
  if (!is_shown) form.panel.EnableSelection(true);
  uses_.services.status.ShowStatus("Ready");
}

void CustomerSelection::TakeAccount(workspace::PageIndex page, const CustomerForm& form) {
  const auto& services = uses_.services;
  ZEMLO_SelectCustFormInq dialog(services, uses_.message_title, uses_.maintenance);
  dialog.Load();
  dialog.skip_next_type_change = true;
  dialog.mKvcboDocType.CodeType("CORDOC");
  dialog.mKvcboDocType.Code(account_type_.empty() ? platform::form_type::kAssessment : account_type_);
  dialog.mKvcboDocType.Enable(true);
  services.host.ShowModal(dialog);
  account_type_ = dialog.mKvcboDocType.Code();
  if (dialog.cancelled) return ClearCustForm(services, form, uses_.customer, uses_.request_of(page));
  FillCustomerField(services, dialog.ZEMLO_CustSelect1.chosen(), page, uses_.customer, form.panel);
  uses_.fill_form_info(page, {dialog.FormType(), dialog.DocumentNumber()});
}

}  // namespace customers
