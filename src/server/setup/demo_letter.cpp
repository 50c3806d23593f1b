#include "server/setup/demo_letter.h"

#include <array>
#include <numeric>

#include "platform/failure.h"
#include "platform/tab_table.h"
#include "server/subject/letter_text.h"

namespace server {
namespace {

using platform::Date;
using platform::TabTable;

struct Share {
  const char* letter_type;
  int on_line;
  int batch;
};
// How often each type is written, on line and by the nightly batch.
constexpr auto kShares = std::to_array<Share>({
    {"101", 6, 0},
    {"102", 4, 0},
    {"103", 2, 0},
    {"104", 2, 14},
    {"105", 5, 0},
    {"106", 5, 0},
    {"107", 4, 0},
    {"108", 4, 0},
    {"109", 4, 22},
    {"110", 6, 30},
    {"111", 8, 0},
    {"112", 3, 0},
    {"113", 7, 4},
    {"114", 0, 6},
    {"118", 3, 0},
});

constexpr auto kBatchOfficer = "BATCH";
constexpr int kIncompleteOneIn = 50;

std::string DrawType(const DemoSlot& slot, Draw& draw) {
  const auto weight = [&](const Share& share) { return slot.night == 0 ? share.on_line : share.batch; };
  int total = 0;
  for (const auto& share : kShares) total += weight(share);
  int place = draw.Below(total);
  for (const auto& share : kShares) {
    place -= weight(share);
    if (place < 0) return share.letter_type;
  }
  return kShares.back().letter_type;
}

/// The period as it would have been called that many months earlier.
TaxPeriod Earlier(TaxPeriod period, std::chrono::months months) {
  const auto due = platform::ParseDate(period.due_date);
  if (!due) return period;
  const auto month = due->year() / due->month() - months;
  period.due_date = platform::DateText(month / due->day());
  period.name = MonthInLetter(month - std::chrono::months(1));
  return period;
}

std::chrono::months MonthsBetween(Date earlier, Date later) {
  return later.year() / later.month() - earlier.year() / earlier.month();
}

std::string FormKey(const std::string& customer, const std::optional<Form>& form) {
  return form ? customer + "/" + form->type + "/" + form->number : customer;
}

}  // namespace

DemoLetters::DemoLetters(Database& database, const std::filesystem::path& product_data, Date today)
    : database_(database), today_(today), office_(FindOffice(database)) {
  ReadCatalogue(product_data / "reference");
  ReadOfficers(product_data / "reference");
  FindAccounts();
}

void DemoLetters::ReadCatalogue(const std::filesystem::path& reference) {
  const auto templates = TabTable::Read(reference / "templates.tsv");
  for (std::size_t row = 0; row < templates.RowCount(); ++row) {
    versions_[templates.Text(row, "LTR_TYP_ID")].push_back({.file = templates.Text(row, "DCMT_NM"),
                                                            .time_stamp = templates.Text(row, "TMPLT_TS"),
                                                            .first_day = templates.Text(row, "EFCTV_DT"),
                                                            .last_day = templates.Text(row, "EXPRTN_DT")});
  }
  const auto codes = TabTable::Read(reference / "codes.tsv");
  for (std::size_t row = 0; row < codes.RowCount(); ++row) {
    if (codes.Text(row, "CD_TBL_ID") == "LTRINPUT")
      form_types_[codes.Text(row, "CD_TBL_CD")] = codes.Text(row, "ADTL_INFO_TXT");
  }
}

void DemoLetters::ReadOfficers(const std::filesystem::path& reference) {
  const auto table = TabTable::Read(reference / "officers.tsv");
  for (std::size_t row = 0; row < table.RowCount(); ++row) {
    if (table.Text(row, "OFCR_ID") != kBatchOfficer) officers_.push_back(table.Text(row, "OFCR_ID"));
  }
  if (officers_.empty()) officers_.emplace_back("DEMO01");
}

void DemoLetters::FindAccounts() {
  const auto counties = database_.Select("SELECT QZ_CNTY_NBR, TRP_ID, TRP_DIST_ID, QZ_CNTY_DESC FROM county");
  for (std::size_t row = 0; row < counties->RecordCount(); ++row) {
    counties_[counties->Text(row, "QZ_CNTY_NBR")] = {counties->Text(row, "TRP_ID"),
                                                     counties->Text(row, "TRP_DIST_ID"),
                                                     counties->Text(row, "QZ_CNTY_DESC")};
  }
  const auto customers = database_.Select("SELECT CUST_ID FROM customer ORDER BY CUST_ID");
  for (std::size_t row = 0; row < customers->RecordCount(); ++row)
    customers_.push_back(customers->Text(row, "CUST_ID"));
  const auto forms = database_.Select(
      R"(SELECT FORM_TYP_CD, FORM_NBR, FORM_CK_DGT_NBR, FORM_STTS_CD, CUST_ID FROM form
         ORDER BY FORM_TYP_CD, FORM_NBR)");
  for (std::size_t row = 0; row < forms->RecordCount(); ++row) {
    const auto type = forms->Text(row, "FORM_TYP_CD");
    forms_[type.front()].push_back({{type, forms->Text(row, "FORM_NBR"), forms->Text(row, "FORM_CK_DGT_NBR"),
                                     forms->Text(row, "FORM_STTS_CD")},
                                    forms->Text(row, "CUST_ID")});
  }
}

const platform::TemplateVersion* DemoLetters::FindVersion(const std::string& letter_type, Date day) const {
  const auto versions = versions_.find(letter_type);
  return versions == versions_.end() ? nullptr
                                     : platform::TemplateInForce(versions->second, platform::DateText(day));
}

const std::vector<DemoLetters::OwnedForm>& DemoLetters::FormsFor(const std::string& letter_type,
                                                                 server::Draw& draw) const {
  static const std::vector<OwnedForm> none;
  const auto types = form_types_.find(letter_type);
  if (types == form_types_.end() || types->second.empty()) return none;
  const auto type =
      types->second[static_cast<std::size_t>(draw.Below(static_cast<int>(types->second.size())))];
  const auto forms = forms_.find(type);
  return forms == forms_.end() ? none : forms->second;
}

const std::vector<LetterField>& DemoLetters::QueriesOf(const std::string& letter_type) {
  const auto [place, is_new] = queries_.try_emplace(letter_type);
  if (is_new) {
    place->second = FindLetterFields(database_, letter_type);
    std::erase_if(place->second, [](const LetterField& field) { return field.kind != FieldKind::kQuery; });
  }
  return place->second;
}

void DemoLetters::RunQueries(DemoLetter& letter) {
  static const auto kNone = std::make_shared<const std::map<std::string, FieldFinding>>();
  letter.findings = kNone;
  const auto& fields = QueriesOf(letter.subject.letter_type);
  if (fields.empty()) return;
  std::map<std::string, FieldFinding> findings;
  const auto limits = FieldQueryLimits({});
  for (const auto& field : fields) {
    const auto failed = failed_queries_.find(&field);
    const auto& finding = findings[field.name] =
        failed != failed_queries_.end()
            ? failed->second
            : RunFieldQuery(database_, field.source, field.rules, letter.subject, limits);
    if (finding.error == error::kExecuteQuery) failed_queries_.try_emplace(&field, finding);
  }
  letter.findings = std::make_shared<const std::map<std::string, FieldFinding>>(std::move(findings));
}

const LetterSubject& DemoLetters::SubjectOf(const std::string& customer, const std::optional<Form>& form) {
  const auto [place, is_new] = subjects_.try_emplace(FormKey(customer, form));
  if (is_new) {
    place->second.customer = FindCustomer(database_, customer);
    place->second.form = form;
    place->second.periods = FindPeriods(database_, customer, form);
    place->second.office = office_;
  }
  return place->second;
}

DemoLetter DemoLetters::Draw(int index, const DemoSlot& slot) {
  DemoLetter letter{
      .slot = slot, .subject = {}, .template_file = "", .officer = kBatchOfficer, .findings = {}};
  auto& draw = letter.draw = server::Draw(static_cast<std::uint64_t>(index) + 1);
  const Date day(std::chrono::floor<std::chrono::days>(slot.time));
  const platform::TemplateVersion* version = nullptr;
  std::string type;
  std::optional<Form> form;
  std::string customer;
  while (version == nullptr || customer.empty()) {
    type = DrawType(slot, draw);
    version = FindVersion(type, day);
    const auto& forms = FormsFor(type, draw);
    if (!form_types_.contains(type)) {
      form.reset();
      customer = draw.From(customers_);
    } else if (!forms.empty()) {
      const auto& owned = forms[static_cast<std::size_t>(draw.Below(static_cast<int>(forms.size())))];
      form = owned.form;
      customer = owned.customer;
    }
  }
  letter.subject = SubjectOf(customer, form);
  letter.subject.letter_type = type;
  letter.subject.today = day;
  letter.subject.customer_was_given = !form.has_value();
  for (auto& period : letter.subject.periods) period = Earlier(period, MonthsBetween(day, today_));
  if (draw.OneIn(kIncompleteOneIn)) letter.subject.customer.fuel_tax_account.clear();
  RunQueries(letter);
  letter.template_file = version->file;
  if (slot.night == 0) letter.officer = draw.From(officers_);
  return letter;
}

const std::vector<std::string>& DemoLetters::CountyColumns(const std::string& county_number) const {
  return counties_.at(county_number);
}

}  // namespace server
