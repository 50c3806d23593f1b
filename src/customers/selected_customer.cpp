#include "customers/selected_customer.h"

#include "platform/text.h"

namespace customers {

namespace {

using platform::Trim;

std::string CityLine(const std::string& city, const std::string& state, const std::string& zip) {
  std::string line(Trim(city));
  line += ", ";
  line += Trim(state);
  line += " ";
  line += Trim(zip);
  return line;
}

void TakeOver(const SelectedCustomer& chosen, CurrentCustomer& customer) {
  customer.CustomerId = chosen.CustID;
  customer.CustomerName = chosen.CUSTNAME;
  customer.CustomerAddr1 = chosen.MailAddress;
  customer.CustomerAddr2 = chosen.MailAddress2;
  customer.CustomerCityLine = CityLine(chosen.MailCity, chosen.MailState, chosen.MailZip);
  if (Trim(customer.CustomerAddr1).empty()) {
    customer.CustomerAddr1 = chosen.ResAddress;
    customer.CustomerAddr2 = chosen.ResAddress2;
  }
  if (Trim(customer.CustomerCityLine) == ",") {
    customer.CustomerCityLine = CityLine(chosen.ResCity, chosen.ResState, chosen.ResZip);
  }
}

void Show(const SelectedCustomer& chosen, const CurrentCustomer& customer, CustomerPanel& panel) {
  panel.name.SetCaption(chosen.CUSTNAME);
  panel.address.SetCaption(chosen.MailAddress);
  panel.city_line.SetCaption(customer.CustomerCityLine);
  panel.phone.SetCaption(chosen.Phone);
  panel.fuel_tax_account.SetCaption(chosen.FuelTax);
  panel.customer_id.SetCaption(chosen.CustID);
  panel.ShowReturnedMail(chosen.returned);
}

}  // namespace

void FillCustomerField(const platform::Services& services, const SelectedCustomer& chosen,
                       workspace::PageIndex page, CurrentCustomer& customer, CustomerPanel& panel) {
  platform::Trap(services, "ZEMLO_Corresp.FillCustomerField", [&] {
    TakeOver(chosen, customer);
    const bool is_chosen = !customer.CustomerId.empty();
    if (is_chosen) {
      customer.CustomerPhone = chosen.Phone;
      customer.CustomerFuelTaxAcct = chosen.FuelTax;
      Show(chosen, customer, panel);
    } else {
      panel.EnableSelection(true);
      customer.CustomerCityLine.clear();
    }
    if (page == workspace::PageIndex::kTracking) customer.TrackingCustomerFixed = is_chosen;
  });
}

}  // namespace customers
