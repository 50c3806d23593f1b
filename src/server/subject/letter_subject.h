#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/value.h"
#include "server/subject/field_rules.h"
#include "server/wire/exchange.h"

namespace server {

/// An address as it is stored; "" for a part that is missing.
struct Address {
  std::string line_1;
  std::string line_2;
  std::string city;
  std::string state;
  std::string zip;  ///< five or nine digits, or as a person wrote it
  bool marked_bad = false;
  std::string verification = "V";  ///< how the postal verification ended, see address_verdict.cpp

  bool IsMissing() const;
  bool IsPostOfficeBox() const;
};

struct Customer {
  std::string id;
  std::string business_name;
  std::string first_name;
  std::string last_name;
  Address mail;
  Address residential;
  std::string phone;
  std::string fuel_tax_account;
  std::string county_number;
  std::string county_name;
};

/// A document of a customer: an assessment, a return, a citation, a receipt.
struct Form {
  std::string type;
  std::string number;
  std::string check_digit;
  std::string status = "O";  ///< "O" open, "C" closed

  bool IsOpen() const { return status == "O"; }
};

struct TaxPeriod {
  std::string name;
  std::string due_date;  ///< "yyyy-mm-dd"
  platform::Money tax = platform::Money::FromCents(0);
  platform::Money penalty = platform::Money::FromCents(0);
  platform::Money interest = platform::Money::FromCents(0);
};

struct Office {
  std::string name;
  std::string address;  ///< lines separated by line feeds
  std::string phone;
  std::string officer;
  std::string state;
};

/// Whom and what a letter is about.
struct LetterSubject {
  std::string letter_type;
  platform::Date today;
  Customer customer;
  FieldRules address_rules = 0;     ///< what the letter asks of the address it goes to
  bool customer_was_given = false;  ///< by its id, not through a form
  std::optional<Form> form;
  std::vector<TaxPeriod> periods;  ///< of the form; without one, of all the customer's forms; oldest first
  Office office;
};

/// Throws Failure kNotFound where there is none.
Customer FindCustomer(Database& database, const std::string& id);
/// That a form of `owner` is not sent to another customer; "" is nobody. Throws Failure kRefused with both
/// names, kNotFound where there is no such customer.
void RequireOwner(Database& database, const std::string& form, const std::string& owner,
                  const std::string& customer);
/// Those of the form; without one, of all the customer's forms. The oldest first.
std::vector<TaxPeriod> FindPeriods(Database& database, const std::string& customer,
                                   const std::optional<Form>& form);
/// The office that writes the letters; nothing but empty texts where none is stored.
Office FindOffice(Database& database);

/// Whom and what a letter is to be about, by name; "" for what is not named.
struct SubjectNames {
  std::string customer;
  std::string form_type = {};
  std::string form_number = {};
  std::string check_digit = {};
};
/// Looks them up as they are now. Throws Failure kRefused where they name nothing or contradict themselves,
/// kNotFound naming the customer or form that is not there.
LetterSubject FindLetterSubject(Database& database, const std::string& letter_type, const SubjectNames& names,
                                platform::Date today);

/// The same for what the record "XML_CONTEXT_INPUT" names. Throws Failure kRefused where it names nothing or
/// contradicts itself, kNotFound naming the customer or form that is not there.
LetterSubject FindLetterSubject(Exchange& exchange, const std::string& letter_type);

}  // namespace server
