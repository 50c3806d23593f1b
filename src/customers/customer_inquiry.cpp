#include "customers/customer_inquiry.h"

#include <array>
#include <memory>
#include <string_view>

#include "customers/context_customer.h"
#include "customers/display_encoders.h"
#include "platform/agreed/customer_record.h"
#include "platform/agreed/requests.h"
#include "platform/text.h"
#include "platform/xml/xml.h"

namespace customers {

namespace {

namespace request_key = platform::request_key;
using platform::CustomerRecord;
using platform::KeyNamed;
using platform::RecordSet;

/// The columns of one of a customer's two addresses.
struct AddressColumns {
  std::string_view line_1;
  std::string_view line_2;
  std::string_view city;
  std::string_view state;
  std::string_view zip;
};
constexpr AddressColumns kMailing{"mail_addr_1", "mail_addr_2", "mail_city", "mail_st", "mail_zip_cd"};
constexpr AddressColumns kResidential{"RES_ADDR_1", "RES_ADDR_2", "RES_CITY", "RES_ST", "RES_ZIP_CD"};

// Parts that are null leave what the customer has.
void TakeAddress(const CustomerRecord& record, const AddressColumns& columns, const DisplayEncoders& encoders,
                 CurrentCustomer& customer) {
  if (const auto line = record.Trimmed(columns.line_1)) customer.CustomerAddr1 = *line;
  if (const auto line = record.Trimmed(columns.line_2)) customer.CustomerAddr2 = *line;
  const auto city = record.Trimmed(columns.city);
  const auto state = record.Trimmed(columns.state);
  const auto zip = record.Trimmed(columns.zip);
  if (city && state && zip)
    customer.CustomerCityLine = *city + ", " + *state + " " + encoders.EncodeZipCode(*zip);
}

}  // namespace

void CustomerInquiry::SendCustPI(const std::string& customer_id) {
  platform::Trap(uses_.services, "ZEMLO_Corresp.SendCustPI", [&] {
    uses_.envelope.Send({
        .type = platform::message_type::kCustomer,
        .name = "CustomerInq",
        .keys = {platform::Criterion(KeyNamed(request_key::kCustomer), customer_id),
                 {"CUSTOMER", KeyNamed(request_key::kLeftOutColumns), "=", "OT_BAL"}},
        .status = "Requesting customer information.",
        .status_when = workspace::RequestDescription::Status::kBeforeSending,
    });
  });
}

void CustomerInquiry::FillCustomerInfo(const workspace::Reply& reply) {
  platform::Trap(uses_.services, "ZEMLO_Corresp.FillCustomerInfo", [&] {
    const auto rows = RowsOf(uses_.services, reply, platform::record_name::kCustomer);
    uses_.customer.Clear();
    if (rows) TakeOver(*rows);
    Show();
    uses_.panel.ShowReturnedMail(rows ? CustomerRecord(*rows, 0).Returned() : platform::ReturnedMail());
  });
}

void CustomerInquiry::TakeOver(const RecordSet& rows) {
  const CustomerRecord record(rows, 0);
  const DisplayEncoders encoders(uses_.services.errors);
  auto& customer = uses_.customer;
  customer.CustomerId = record.Text("Cust_Id").value_or("");
  customer.CustomerName = platform::ReplaceAll(record.Name(), "&", "&&");
  TakeAddress(record, kMailing, encoders, customer);
  if (const auto phone = record.Trimmed("PHN_NBR")) customer.CustomerPhone = encoders.FormatPhone(*phone);
  if (const auto account = record.Trimmed("ACCNT_NBR")) {
    customer.CustomerFuelTaxAcct = encoders.EncodeFuelTaxAccountNbr(*account);
  }
  if (customer.CustomerAddr1.empty()) TakeAddress(record, kResidential, encoders, customer);
  if (!customer.CustomerAddr2.empty()) customer.CustomerAddr1 += ", " + customer.CustomerAddr2;
}

void CustomerInquiry::Show() {
  const auto& customer = uses_.customer;
  auto& panel = uses_.panel;
  panel.name.SetCaption(customer.CustomerName);
  panel.address.SetCaption(customer.CustomerAddr1);
  panel.city_line.SetCaption(customer.CustomerCityLine);
  panel.phone.SetCaption(customer.CustomerPhone);
  panel.fuel_tax_account.SetCaption(customer.CustomerFuelTaxAcct);
  panel.customer_id.SetCaption(customer.CustomerId);
}

// Decision [unreadable-customer].
void CustomerInquiry::FillCustFromLetter(const workspace::Reply& reply) {
  platform::Trap(uses_.services, "ZEMLO_Corresp.FillCustFromLetter", [&] {
    const auto rows = RowsOf(uses_.services, reply, platform::record_name::kContext);
    if (!rows) return AskServer();
    // A context that cannot be read tells nothing of the customer; the server may.
    const bool is_read = platform::Trap(uses_.services, "ZEMLO_Corresp.FillCustFromLetter",
                                        [&] { ShowContext(rows->FirstText()); });
    if (!is_read) AskServer();
    ShowMarks(reply);
  });
}

void CustomerInquiry::ShowContext(const std::string& context) {
  const auto document = platform::While("reading the customer of a letter",
                                        [&] { return platform::XmlDocument::Parse(context).OrFail(); });
  const auto named = ReadContextCustomer(document);
  auto& customer = uses_.customer;
  if (named.name) {
    customer.CustomerName = *named.name;
    uses_.panel.name.SetCaption(customer.CustomerName);
  }
  if (named.id) {
    customer.CustomerId = *named.id;
    uses_.panel.customer_id.SetCaption(customer.CustomerId);
  }
  if (named.address) {
    ShowContextAddress(*named.address, customer, uses_.panel);
  } else {
    AskServer();
  }
}

// A letter's data are as old as the letter: the marks come beside them.
void CustomerInquiry::ShowMarks(const workspace::Reply& reply) {
  const auto marks = RowsOf(uses_.services, reply, platform::record_name::kCustomer);
  if (marks) uses_.panel.ShowReturnedMail(CustomerRecord(*marks, 0).Returned());
}

void CustomerInquiry::AskServer() {
  SendCustPI(uses_.customer.CustomerId);
  auto& panel = uses_.panel;
  for (auto* field : {&panel.name, &panel.address, &panel.city_line}) field->SetCaption("");
}

}  // namespace customers
