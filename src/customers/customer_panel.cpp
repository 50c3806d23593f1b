#include "customers/customer_panel.h"

namespace customers {

void CustomerPanel::ClearFields() {
  for (auto* field : {&name, &address, &city_line, &phone, &fuel_tax_account, &customer_id})
    field->SetCaption("");
}

void CustomerPanel::EnableSelection(bool enabled) {
  select_customer.SetEnabled(enabled);
  select_account.SetEnabled(enabled);
}

void CurrentCustomer::Clear() {
  for (auto* text : {&CustomerId, &CustomerName, &CustomerAddr1, &CustomerAddr2, &CustomerCityLine,
                     &CustomerPhone, &CustomerFuelTaxAcct}) {
    text->clear();
  }
}

}  // namespace customers
