#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "platform/record_set.h"

/// A customer between the record "CUSTOMER", a list and a page.
namespace platform {

/// Which of a customer's addresses mail came back from.
struct ReturnedMail {
  bool mailing = false;
  bool residential = false;

  bool Any() const { return mailing || residential; }
  bool operator==(const ReturnedMail&) const = default;
};

/// What the customer select control shows of the chosen customer, by the names of its values. An empty
/// `CustID` means that none was chosen.
struct SelectedCustomer {
  std::string CustID = {};
  std::string CUSTNAME = {};
  std::string MailAddress = {};
  std::string MailAddress2 = {};
  std::string MailCity = {};
  std::string MailState = {};
  std::string MailZip = {};
  std::string ResAddress = {};
  std::string ResAddress2 = {};
  std::string ResCity = {};
  std::string ResState = {};
  std::string ResZip = {};
  std::string Phone = {};
  std::string FuelTax = {};
  ReturnedMail returned = {};

  /// The city the customer is known by in a list: of the mailing address, else of the residential one.
  const std::string& City() const { return MailCity.empty() ? ResCity : MailCity; }
};

struct CustomerValue {
  std::string_view name;
  std::string SelectedCustomer::*held;
  std::string_view column;  ///< of the record; "" for the name, which is put together
};

inline constexpr auto kCustomerValues = std::to_array<CustomerValue>({
    {"CustID", &SelectedCustomer::CustID, "Cust_Id"},
    {"CUSTNAME", &SelectedCustomer::CUSTNAME, ""},
    {"MailAddress", &SelectedCustomer::MailAddress, "mail_addr_1"},
    {"MailAddress2", &SelectedCustomer::MailAddress2, "mail_addr_2"},
    {"MailCity", &SelectedCustomer::MailCity, "mail_city"},
    {"MailState", &SelectedCustomer::MailState, "mail_st"},
    {"MailZip", &SelectedCustomer::MailZip, "mail_zip_cd"},
    {"ResAddress", &SelectedCustomer::ResAddress, "RES_ADDR_1"},
    {"ResAddress2", &SelectedCustomer::ResAddress2, "RES_ADDR_2"},
    {"ResCity", &SelectedCustomer::ResCity, "RES_CITY"},
    {"ResState", &SelectedCustomer::ResState, "RES_ST"},
    {"ResZip", &SelectedCustomer::ResZip, "RES_ZIP_CD"},
    {"Phone", &SelectedCustomer::Phone, "PHN_NBR"},
    {"FuelTax", &SelectedCustomer::FuelTax, "ACCNT_NBR"},
});

/// One customer of a record "CUSTOMER". Good while the rows live.
class CustomerRecord {
 public:
  CustomerRecord(const RecordSet& rows, std::size_t row) : rows_(rows), row_(row) {}

  /// Nothing for null, otherwise the text as it is stored.
  std::optional<std::string> Text(std::string_view column) const;
  /// The same without blanks around it.
  std::optional<std::string> Trimmed(std::string_view column) const;

  /// The business name; where it is missing or blank, first and last name, if there are both.
  std::string Name() const;

  /// None where the record does not say.
  ReturnedMail Returned() const;

  /// All its values as they are stored, without blanks around them; "" for null.
  SelectedCustomer Values() const;

 private:
  bool IsMarked(std::string_view column) const;

  const RecordSet& rows_;
  const std::size_t row_;
};

}  // namespace platform
