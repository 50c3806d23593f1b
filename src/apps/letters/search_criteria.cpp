#include "apps/letters/search_criteria.h"

#include <algorithm>
#include <array>

#include "apps/letters/page_user.h"

namespace apps {
namespace {

using workspace::PageIndex;
using workspace::TrackingPage;

struct Status {
  std::string_view name;
  std::size_t option;
};
constexpr auto kStatuses = std::to_array<Status>({
    {"all", TrackingPage::kAll},
    {"successful", TrackingPage::kSuccessful},
    {"failure", TrackingPage::kFailure},
});

std::optional<std::size_t> StatusOption(const std::string& name) {
  const auto found = std::ranges::find(kStatuses, std::string_view(name), &Status::name);
  return found == kStatuses.end() ? std::nullopt : std::optional(found->option);
}

void PickFormType(TrackingPage& page, const std::string& type) {
  const auto letter = page.ZEMLO_LetterType.GetText();
  Pick(page.ZEMLO_FormTypeCodes, type,
       letter.empty() ? "There is no form type \"" + type + "\" to search by."
                      : "Form type \"" + type + "\" does not go with \"" + letter + "\".");
}

void FillFormNumber(TrackingPage& page, const std::string& number) {
  if (!page.txtFormNum.enabled()) {
    Refuse("\"" + page.ZEMLO_LetterType.GetText() + "\" is about no document: leave out --form.");
  }
  page.txtFormNum.SetText(number);
}

// A date field takes no day before its earliest one, and would search for another day than the one asked for.
void FillDay(platform::DateField& field, const std::string& text) {
  const auto day = platform::ParseDate(text);
  field.SetValue(day);
  if (field.value() == day) return;
  Refuse("The earliest day to search from is " + platform::DateText(*field.value()) + ", not \"" + text +
         "\".");
}

}  // namespace

void AddCriteria(CommandLine& line) {
  line.Option("type", "CODE", "Only letters of that type.")
      .Option("customer", "ID", "Only letters to that customer.")
      .Option("form-type", "T", "Only letters about a document of that type.")
      .Option("form", "NUMBER", "Only letters about that document; with or without its check digit.")
      .Option("status", "STATUS", "all (default), successful or failure.")
      .Option("from", "DAY", "Only letters of that day, or of the days from it to the one of --to.")
      .Option("to", "DAY", "The last day, at most 365 days after the first.")
      .Option("batch", "N", "Only letters of that batch run.")
      .Option("troop-district", "TEXT", "Of these only the ones of a troop, \"B\", or a district, \"B12\".");
}

std::optional<std::string> DayFault(const CommandLine& line) {
  for (const auto* option : {"from", "to"}) {
    if (!line.IsSet(option) || platform::ParseDate(line.Value(option))) continue;
    return "--" + std::string(option) + " takes a day as yyyy-mm-dd, not \"" + line.Value(option) + "\".";
  }
  return std::nullopt;
}

std::optional<std::string> CriterionFault(const CommandLine& line) {
  if (line.IsSet("status") && !StatusOption(line.Value("status"))) {
    return "--status takes all, successful or failure, not \"" + line.Value("status") + "\".";
  }
  return DayFault(line);
}

namespace {

void FillCriteria(HeadlessOffice& office, const CommandLine& line) {
  auto& page = office.workspace().pages().tracking;
  if (line.IsSet("customer")) ChooseCustomer(office, line.Value("customer"), PageIndex::kTracking);
  if (line.IsSet("type")) {
    RequireLetterType(office, page.ZEMLO_LetterType, line.Value("type"));
    Pick(page.ZEMLO_LetterType, line.Value("type"), "The list of letter types is disabled.");
  }
  if (line.IsSet("form-type")) PickFormType(page, line.Value("form-type"));
  if (line.IsSet("form")) FillFormNumber(page, line.Value("form"));
  if (line.IsSet("from")) FillDay(page.from_date, line.Value("from"));
  if (line.IsSet("to")) FillDay(page.to_date, line.Value("to"));
  if (line.IsSet("batch")) Type(page.txtBatch, line.Value("batch"), "--batch");
  if (line.IsSet("troop-district")) Type(page.txtTD, line.Value("troop-district"), "--troop-district");
  const auto status = line.IsSet("status") ? StatusOption(line.Value("status")) : TrackingPage::kAll;
  page.OptLetterStatus[status.value()].UserClicks();
}

}  // namespace

void SearchLetters(HeadlessOffice& office, const CommandLine& line) {
  auto& pages = office.workspace().pages();
  pages.tabs.Select(PageIndex::kTracking);
  FillCriteria(office, line);
  RequireEnabled(pages.tracking.search);
  pages.tracking.search.UserClicks();
  office.RunUntilIdle();
}

}  // namespace apps
