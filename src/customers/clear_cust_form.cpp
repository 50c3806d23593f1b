#include "customers/clear_cust_form.h"

namespace customers {

void ClearCustForm(const platform::Services& services, const std::optional<CustomerForm>& page,
                   CurrentCustomer& customer, workspace::LetterRequestFields& request) {
  platform::Trap(services, "ZEMLO_Corresp.ClearCustForm", [&] {
    if (page) {
      page->form_type.Code("");
      page->form_type.SetText("");
      page->form_number.SetText("");
    }
    for (auto* text : {&customer.CustomerId, &request.customer_id, &request.form_text, &request.form_type,
                       &request.form_number, &request.check_digit}) {
      text->clear();
    }
    if (!page) return;
    auto& panel = page->panel;
    for (auto* field :
         {&panel.name, &panel.address, &panel.city_line, &panel.phone, &panel.fuel_tax_account}) {
      field->SetCaption("");
    }
    panel.ShowReturnedMail({});
    panel.EnableSelection(true);
  });
}

}  // namespace customers
