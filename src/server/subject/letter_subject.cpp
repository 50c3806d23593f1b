#include "server/subject/letter_subject.h"

#include <algorithm>
#include <array>
#include <cctype>

#include "platform/agreed/requests.h"
#include "platform/failure.h"
#include "platform/text.h"
#include "server/subject/letter_text.h"

namespace server {
namespace {

using platform::Failure;
using platform::Money;
using platform::RecordSet;

std::string Part(const RecordSet& rows, const std::string& column) {
  return std::string(platform::Trim(rows.Text(column)));
}

// How the two addresses' columns begin.
Address ReadAddress(const RecordSet& rows, const std::string& prefix) {
  return {.line_1 = Part(rows, prefix + "ADDR_1"),
          .line_2 = Part(rows, prefix + "ADDR_2"),
          .city = Part(rows, prefix + "CITY"),
          .state = Part(rows, prefix + "ST"),
          .zip = Part(rows, prefix + "ZIP_CD"),
          .marked_bad = Part(rows, prefix + "BAD_FLG") == "Y",
          .verification = Part(rows, prefix + "VRFY_CD")};
}

/// What the request names, blanks removed.
SubjectNames NamesIn(const RecordSet& rows) {
  SubjectNames names;
  if (rows.IsEmpty()) return names;
  const auto text = [&](std::string_view column) {
    return rows.HasColumn(column) ? std::string(platform::Trim(rows.Text(0, column))) : "";
  };
  names = {text("CUST_ID"), text("FORM_TYP_CD"), text("FORM_NBR"), text("FORM_CK_DGT_NBR")};
  if (names.form_number.empty()) names.form_number = text("RCPT_NBR");
  if (names.check_digit.empty()) names.check_digit = text("RCPT_CK_DGT_NBR");
  return names;
}

std::string KnownCustomer(Database& database, const std::string& id) {
  const auto customer = FindCustomer(database, id);
  const auto name = customer.business_name.empty() ? customer.first_name + " " + customer.last_name
                                                   : customer.business_name;
  return platform::Quoted(id) + ", " + std::string(platform::Trim(name));
}

/// The form, and the customer it belongs to.
std::pair<Form, std::string> FindForm(Database& database, const SubjectNames& input) {
  if (input.form_type.empty()) {
    throw Failure(Failure::Kind::kRefused,
                  "The form number \"" + input.form_number + "\" came without a form type.");
  }
  const auto rows = database.Select(
      "SELECT FORM_CK_DGT_NBR, CUST_ID, FORM_STTS_CD FROM form WHERE FORM_TYP_CD = ? AND FORM_NBR = ?",
      {input.form_type, input.form_number});
  if (rows->IsEmpty()) {
    throw Failure(Failure::Kind::kNotFound,
                  "There is no form \"" + input.form_number + "\" of type \"" + input.form_type + "\".");
  }
  const auto check_digit = Part(*rows, "FORM_CK_DGT_NBR");
  if (!input.check_digit.empty() && !platform::EqualsIgnoringCase(input.check_digit, check_digit)) {
    throw Failure(Failure::Kind::kRefused, "The check digit \"" + input.check_digit +
                                               "\" does not belong to the form \"" + input.form_number +
                                               "\".");
  }
  return {{.type = input.form_type,
           .number = input.form_number,
           .check_digit = check_digit,
           .status = Part(*rows, "FORM_STTS_CD")},
          Part(*rows, "CUST_ID")};
}

}  // namespace

Customer FindCustomer(Database& database, const std::string& id) {
  const auto rows = database.Select(
      R"(SELECT customer.*, county.QZ_CNTY_DESC FROM customer
         JOIN county ON county.QZ_CNTY_NBR = customer.QZ_CNTY_NBR WHERE CUST_ID = ?)",
      {id});
  if (rows->IsEmpty()) throw Failure(Failure::Kind::kNotFound, "There is no customer \"" + id + "\".");
  return {.id = id,
          .business_name = Part(*rows, "CUST_BSNS_NM"),
          .first_name = Part(*rows, "FIRST_NM"),
          .last_name = Part(*rows, "LAST_NM"),
          .mail = ReadAddress(*rows, "MAIL_"),
          .residential = ReadAddress(*rows, "RES_"),
          .phone = Part(*rows, "PHN_NBR"),
          .fuel_tax_account = Part(*rows, "ACCNT_NBR"),
          .county_number = Part(*rows, "QZ_CNTY_NBR"),
          .county_name = Part(*rows, "QZ_CNTY_DESC")};
}

std::vector<TaxPeriod> FindPeriods(Database& database, const std::string& customer,
                                   const std::optional<Form>& form) {
  const auto rows =
      form ? database.Select(
                 "SELECT * FROM tax_period WHERE FORM_TYP_CD = ? AND FORM_NBR = ? ORDER BY DUE_DT, PRD_NBR",
                 {form->type, form->number})
           : database.Select(
                 R"(SELECT tax_period.* FROM tax_period JOIN form
                    ON form.FORM_TYP_CD = tax_period.FORM_TYP_CD AND form.FORM_NBR = tax_period.FORM_NBR
                    WHERE form.CUST_ID = ? ORDER BY DUE_DT, tax_period.FORM_NBR, PRD_NBR)",
                 {customer});
  std::vector<TaxPeriod> periods;
  const auto cents = [&](std::size_t row, std::string_view column) {
    return Money::FromCents(rows->Get(row, column).AsInteger());
  };
  for (std::size_t row = 0; row < rows->RecordCount(); ++row) {
    periods.push_back({rows->Text(row, "PRD_NM"), rows->Text(row, "DUE_DT"), cents(row, "TAX_AMT"),
                       cents(row, "PNLTY_AMT"), cents(row, "INTRST_AMT")});
  }
  return periods;
}

Office FindOffice(Database& database) {
  const auto rows = database.Select("SELECT * FROM office ORDER BY OFFICE_NBR");
  if (rows->IsEmpty()) return {};
  return {
      .name = rows->Text("OFFICE_NM"),
      .address = rows->Text("OFFICE_ADDR_1") + "\n" +
                 CityLine(rows->Text("OFFICE_CITY"), rows->Text("OFFICE_ST"), rows->Text("OFFICE_ZIP_CD")),
      .phone = rows->Text("OFFICE_PHN_NBR"),
      .officer = rows->Text("OFFICER_NM"),
      .state = rows->Text("OFFICE_ST")};
}

bool Address::IsMissing() const {
  return line_1.empty() || city.empty() || state.empty() || zip.empty();
}

bool Address::IsPostOfficeBox() const {
  // "PO BOX 12", "P.O. Box 12" and "P O BOX 12" are the same thing.
  const auto letters =
      platform::UpperCase(platform::ReplaceAll(platform::ReplaceAll(line_1, ".", ""), " ", ""));
  return letters.starts_with("POBOX");
}

void RequireOwner(Database& database, const std::string& form, const std::string& owner,
                  const std::string& customer) {
  if (customer.empty() || customer == owner) return;
  throw Failure(Failure::Kind::kRefused, "The form " + platform::Quoted(form) + " belongs to the customer " +
                                             KnownCustomer(database, owner) + ", not to " +
                                             KnownCustomer(database, customer) + ".");
}

LetterSubject FindLetterSubject(Database& database, const std::string& letter_type, const SubjectNames& names,
                                platform::Date today) {
  if (names.customer.empty() && names.form_number.empty()) {
    throw Failure(Failure::Kind::kRefused, "The request names neither a customer nor a form.");
  }
  LetterSubject subject{
      .letter_type = letter_type, .today = today, .customer = {}, .form = {}, .periods = {}, .office = {}};
  subject.customer_was_given = !names.customer.empty();
  auto customer = names.customer;
  if (!names.form_number.empty()) {
    auto [form, owner] = FindForm(database, names);
    RequireOwner(database, form.number, owner, customer);
    customer = owner;
    subject.form = std::move(form);
  }
  subject.customer = FindCustomer(database, customer);
  subject.periods = FindPeriods(database, customer, subject.form);
  subject.office = FindOffice(database);
  return subject;
}

LetterSubject FindLetterSubject(Exchange& exchange, const std::string& letter_type) {
  const auto names = NamesIn(*exchange.request.Rows(platform::record_name::kContextInput));
  return FindLetterSubject(exchange.database, letter_type, names, exchange.Today());
}

}  // namespace server
