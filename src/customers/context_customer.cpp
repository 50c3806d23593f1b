#include "customers/context_customer.h"

namespace customers {

namespace {

std::optional<std::string> FirstText(const platform::XmlDocument& context, const char* name) {
  const auto element = context.FirstByTagName(name);
  if (!element) return std::nullopt;
  return element.Text();
}

}  // namespace

ContextCustomer ReadContextCustomer(const platform::XmlDocument& context) {
  return {.id = FirstText(context, "CUST_ID"),
          .name = FirstText(context, "CUSTOMER_NAME"),
          .address = FirstText(context, "CUSTOMER_ADDR")};
}

void ShowContextAddress(const std::string& address, CurrentCustomer& customer, CustomerPanel& panel) {
  const auto line_feed = address.rfind('\n');
  customer.CustomerAddr1 = address.substr(0, line_feed);
  if (line_feed != std::string::npos) customer.CustomerCityLine = address.substr(line_feed + 1);
  panel.address.SetCaption(customer.CustomerAddr1);
  panel.city_line.SetCaption(customer.CustomerCityLine);
}

void ShowCustomerIdOnly(const std::string& id, CurrentCustomer& customer, CustomerPanel& panel) {
  customer.Clear();
  customer.CustomerId = id;
  for (auto* field : {&panel.name, &panel.address, &panel.city_line, &panel.phone, &panel.fuel_tax_account}) {
    field->SetCaption("");
  }
  panel.customer_id.SetCaption(id);
  panel.ShowReturnedMail({});
}

void ShowContextCustomer(const ContextCustomer& named, CurrentCustomer& customer, CustomerPanel& panel) {
  ShowCustomerIdOnly(named.id.value_or(""), customer, panel);
  customer.CustomerName = named.name.value_or("");
  panel.name.SetCaption(customer.CustomerName);
  ShowContextAddress(named.address.value_or(""), customer, panel);
}

}  // namespace customers
