#include "customers/customer_panel.h"

#include "customers/returned_mail.h"

namespace customers {

void CustomerPanel::ClearFields() {
  for (auto* field : {&name, &address, &city_line, &phone, &fuel_tax_account, &customer_id})
    field->SetCaption("");
  ShowReturnedMail({});
}

void CustomerPanel::ShowReturnedMail(const platform::ReturnedMail& returned) {
  returned_ = returned;
  returned_mail.SetCaption(ReturnedMailText(returned));
}

void CustomerPanel::AddReturnedMail(const platform::ReturnedMail& returned) {
  ShowReturnedMail({.mailing = returned_.mailing || returned.mailing,
                    .residential = returned_.residential || returned.residential});
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
