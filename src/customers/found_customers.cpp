#include "customers/found_customers.h"

#include <array>
#include <string>
#include <string_view>

#include "platform/agreed/customer_record.h"

namespace customers {

namespace {

using platform::RecordSet;

using platform::kCustomerValues;

/// How a page shows a value that is stored in another form.
struct Encoding {
  std::string SelectedCustomer::*held;
  std::string (DisplayEncoders::*encoder)(std::string_view text) const;
};
constexpr auto kEncodings = std::to_array<Encoding>({
    {&SelectedCustomer::MailZip, &DisplayEncoders::EncodeZipCode},
    {&SelectedCustomer::ResZip, &DisplayEncoders::EncodeZipCode},
    {&SelectedCustomer::Phone, &DisplayEncoders::FormatPhone},
    {&SelectedCustomer::FuelTax, &DisplayEncoders::EncodeFuelTaxAccountNbr},
});
constexpr std::string_view kCity = "City";

struct ListedColumn {
  std::string_view key;
  std::string_view caption;
};
constexpr auto kListed = std::to_array<ListedColumn>(
    {{"CustID", "Customer ID"}, {"CUSTNAME", "Name"}, {kCity, ""}, {"FuelTax", "Fuel Tax Account"}});

SelectedCustomer ShownCustomer(const RecordSet& records, std::size_t row, const DisplayEncoders& encoders) {
  auto customer = platform::CustomerRecord(records, row).Values();
  for (const auto& [held, encoder] : kEncodings) customer.*held = (encoders.*encoder)(customer.*held);
  return customer;
}

std::vector<std::string> Columns() {
  std::vector<std::string> columns;
  columns.reserve(kCustomerValues.size() + 1);
  for (const auto& value : kCustomerValues) columns.emplace_back(value.name);
  columns.emplace_back(kCity);
  return columns;
}

}  // namespace

std::vector<platform::Grid::Column> FoundCustomerColumns() {
  std::vector<platform::Grid::Column> columns;
  columns.reserve(kListed.size());
  for (const auto& [key, caption] : kListed) {
    columns.push_back({std::string(key), std::string(caption), "", /*hidden=*/false, "", ""});
  }
  return columns;
}

std::shared_ptr<RecordSet> ListCustomers(const RecordSet& records, const DisplayEncoders& encoders) {
  auto found = std::make_shared<RecordSet>(Columns());
  for (std::size_t row = 0; row < records.RecordCount(); ++row) {
    const auto customer = ShownCustomer(records, row, encoders);
    std::vector<platform::Value> values;
    values.reserve(kCustomerValues.size() + 1);
    for (const auto& value : kCustomerValues) values.emplace_back(customer.*value.held);
    values.emplace_back(customer.City());
    found->Append(std::move(values));
  }
  found->MoveFirst();
  return found;
}

SelectedCustomer CustomerAt(const RecordSet& found, std::size_t row) {
  SelectedCustomer customer;
  for (const auto& value : kCustomerValues) customer.*value.held = found.Text(row, value.name);
  return customer;
}

}  // namespace customers
