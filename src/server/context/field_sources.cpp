#include "server/context/field_sources.h"

#include <algorithm>
#include <array>

#include "platform/agreed/form_numbers.h"
#include "platform/text.h"
#include "server/subject/address_verdict.h"
#include "server/subject/letter_text.h"

namespace server {
namespace {

using platform::Money;

FieldValue Text(std::string text, std::string raw) {
  const bool is_null = raw.empty();
  return {.text = std::move(text), .raw = std::move(raw), .is_null = is_null};
}
FieldValue Text(const std::string& text) {
  return Text(text, text);
}
FieldValue Day(platform::Date day) {
  return Text(DateInLetter(day), platform::DateText(day));
}

Money Total(const TaxPeriod& period) {
  return period.tax + period.penalty + period.interest;
}

template <typename Part>
FieldValue Sum(const LetterSubject& subject, Part part) {
  auto sum = Money::FromCents(0);
  for (const auto& period : subject.periods) sum = sum + part(period);
  auto value = AmountValue(sum);
  value.found = !subject.periods.empty();
  return value;
}

template <typename Part>
FieldValue OfForm(const LetterSubject& subject, Part part) {
  if (subject.form) return Text(part(*subject.form));
  return {.text = "", .raw = "", .found = false};
}

std::string Name(const Customer& customer) {
  if (!customer.business_name.empty()) return customer.business_name;
  return std::string(platform::Trim(customer.first_name + " " + customer.last_name));
}

std::string FormDescription(const Form& form) {
  const auto* const type = platform::FindFormType(form.type);
  return type == nullptr ? "" : std::string(type->description);
}

platform::Date DaysLater(platform::Date day, int count) {
  return platform::Date(std::chrono::sys_days(day) + std::chrono::days(count));
}

/// The reference an answer to the letter should name: letter type, form or customer, day.
std::string Reference(const LetterSubject& subject) {
  const auto& about = subject.form ? subject.form->number : subject.customer.id;
  return subject.letter_type + "-" + about + "-" +
         platform::ReplaceAll(platform::DateText(subject.today), "-", "");
}

constexpr int kDaysToPay = 30;

constexpr FlagWord kOfToday = state::kNotFromData | state::kVolatile;

constexpr auto kFieldSources = std::to_array<FieldSource>({
    {"customer.name", [](const auto& s) { return Text(Name(s.customer)); }},
    {"customer.address",
     [](const auto& s) {
       return Text(AddressLines(s.customer, JudgeAddresses(s.customer, s.office.state, s.address_rules)));
     }},
    {"customer.id", [](const auto& s) { return Text(s.customer.id); }},
    {"customer.account",
     [](const auto& s) {
       return Text(FuelTaxAccountInLetter(s.customer.fuel_tax_account), s.customer.fuel_tax_account);
     }},
    {"customer.phone", [](const auto& s) { return Text(PhoneInLetter(s.customer.phone), s.customer.phone); }},
    {"customer.county", [](const auto& s) { return Text(s.customer.county_name, s.customer.county_number); }},
    {"form.number", [](const auto& s) { return OfForm(s, [](const Form& form) { return form.number; }); }},
    {"form.number_with_digit",
     [](const auto& s) {
       return OfForm(s, [](const Form& form) { return form.number + "-" + form.check_digit; });
     }},
    {"form.check_digit",
     [](const auto& s) { return OfForm(s, [](const Form& form) { return form.check_digit; }); }},
    {"form.type", [](const auto& s) { return OfForm(s, [](const Form& form) { return form.type; }); }},
    {"form.type_description", [](const auto& s) { return OfForm(s, FormDescription); }},
    {"letter.date", [](const auto& s) { return Day(s.today); }, kOfToday},
    {"letter.due_date", [](const auto& s) { return Day(DaysLater(s.today, kDaysToPay)); }, kOfToday},
    {"letter.reference", [](const auto& s) { return Text(Reference(s)); }, kOfToday},
    {"officer.name", [](const auto& s) { return Text(s.office.officer); }},
    {"office.name", [](const auto& s) { return Text(s.office.name); }},
    {"office.address", [](const auto& s) { return Text(s.office.address); }},
    {"office.phone", [](const auto& s) { return Text(PhoneInLetter(s.office.phone), s.office.phone); }},
    {"account.tax_total",
     [](const auto& s) { return Sum(s, [](const auto& period) { return period.tax; }); }},
    {"account.penalty_total",
     [](const auto& s) { return Sum(s, [](const auto& period) { return period.penalty; }); }},
    {"account.interest_total",
     [](const auto& s) { return Sum(s, [](const auto& period) { return period.interest; }); }},
    {"account.amount_due", [](const auto& s) { return Sum(s, Total); }},
    {"period.count",
     [](const auto& s) {
       auto count = Text(std::to_string(s.periods.size()));
       count.is_zero = s.periods.empty();
       return count;
     }},
});

constexpr auto kPeriodSources = std::to_array<PeriodSource>({
    {"period.name", [](const auto& period) { return Text(period.name); }},
    {"period.due_date",
     [](const auto& period) { return Text(DateInLetter(period.due_date), period.due_date); }},
    {"period.tax", [](const auto& period) { return AmountValue(period.tax); }},
    {"period.penalty", [](const auto& period) { return AmountValue(period.penalty); }},
    {"period.interest", [](const auto& period) { return AmountValue(period.interest); }},
    {"period.total", [](const auto& period) { return AmountValue(Total(period)); }},
});

template <typename Sources>
std::string NamesOf(const Sources& sources) {
  std::string names;
  for (const auto& source : sources) names += (names.empty() ? "" : ", ") + std::string(source.name);
  return names;
}

}  // namespace

FieldValue AmountValue(Money amount) {
  return {.text = "$" + amount.AsGroupedText(), .raw = amount.AsText(), .is_zero = amount.cents() == 0};
}

const FieldSource* FindFieldSource(std::string_view name) {
  const auto found = std::ranges::find(kFieldSources, name, &FieldSource::name);
  return found == kFieldSources.end() ? nullptr : &*found;
}

const PeriodSource* FindPeriodSource(std::string_view name) {
  const auto found = std::ranges::find(kPeriodSources, name, &PeriodSource::name);
  return found == kPeriodSources.end() ? nullptr : &*found;
}

std::string FieldSourceNames() {
  return NamesOf(kFieldSources);
}

std::string PeriodSourceNames() {
  return NamesOf(kPeriodSources);
}

}  // namespace server
