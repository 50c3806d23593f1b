#include "customers/found_customers.h"

#include <array>
#include <string>
#include <string_view>

#include "customers/customer_record.h"

namespace customers {

namespace {

using platform::RecordSet;

using Encoder = std::string (DisplayEncoders::*)(std::string_view text) const;

/// A value of the customer select control: its name, the column it is stored in, and how it is shown.
struct SelectValue {
  std::string_view name;
  std::string SelectedCustomer::*held;
  std::string_view column;
  Encoder encoder = nullptr;  ///< null shows it as it is
};

constexpr auto kValues = std::to_array<SelectValue>({
    {"CustID", &SelectedCustomer::CustID, "Cust_Id"},
    {"CUSTNAME", &SelectedCustomer::CUSTNAME, ""},  // put together from three columns
    {"MailAddress", &SelectedCustomer::MailAddress, "mail_addr_1"},
    {"MailAddress2", &SelectedCustomer::MailAddress2, "mail_addr_2"},
    {"MailCity", &SelectedCustomer::MailCity, "mail_city"},
    {"MailState", &SelectedCustomer::MailState, "mail_st"},
    {"MailZip", &SelectedCustomer::MailZip, "mail_zip_cd", &DisplayEncoders::EncodeZipCode},
    {"ResAddress", &SelectedCustomer::ResAddress, "RES_ADDR_1"},
    {"ResAddress2", &SelectedCustomer::ResAddress2, "RES_ADDR_2"},
    {"ResCity", &SelectedCustomer::ResCity, "RES_CITY"},
    {"ResState", &SelectedCustomer::ResState, "RES_ST"},
    {"ResZip", &SelectedCustomer::ResZip, "RES_ZIP_CD", &DisplayEncoders::EncodeZipCode},
    {"Phone", &SelectedCustomer::Phone, "PHN_NBR", &DisplayEncoders::FormatPhone},
    {"FuelTax", &SelectedCustomer::FuelTax, "ACCNT_NBR", &DisplayEncoders::EncodeFuelTaxAccountNbr},
});
constexpr std::string_view kCity = "City";

struct ListedColumn {
  std::string_view key;
  std::string_view caption;
};
constexpr auto kListed = std::to_array<ListedColumn>(
    {{"CustID", "Customer ID"}, {"CUSTNAME", "Name"}, {kCity, ""}, {"FuelTax", "Fuel Tax Account"}});

SelectedCustomer ReadCustomer(const CustomerRecord& record, const DisplayEncoders& encoders) {
  SelectedCustomer customer;
  for (const auto& value : kValues) {
    const auto text = value.column.empty() ? record.Name() : record.Trimmed(value.column).value_or("");
    customer.*value.held = value.encoder == nullptr ? text : (encoders.*value.encoder)(text);
  }
  return customer;
}

std::vector<std::string> Columns() {
  std::vector<std::string> columns;
  columns.reserve(kValues.size() + 1);
  for (const auto& value : kValues) columns.emplace_back(value.name);
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
    const auto customer = ReadCustomer(CustomerRecord(records, row), encoders);
    std::vector<platform::Value> values;
    values.reserve(kValues.size() + 1);
    for (const auto& value : kValues) values.emplace_back(customer.*value.held);
    values.emplace_back(customer.MailCity.empty() ? customer.ResCity : customer.MailCity);
    found->Append(std::move(values));
  }
  found->MoveFirst();
  return found;
}

SelectedCustomer CustomerAt(const RecordSet& found, std::size_t row) {
  SelectedCustomer customer;
  for (const auto& value : kValues) customer.*value.held = found.Text(row, value.name);
  return customer;
}

}  // namespace customers
