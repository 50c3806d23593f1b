#include "apps/letters/asked_letter.h"

#include "apps/letters/page_user.h"
#include "apps/letters/standard_streams.h"

namespace apps {
namespace {

using workspace::PageIndex;

void FillRequest(HeadlessOffice& office, const CommandLine& line) {
  auto& page = office.page();
  if (line.IsSet("customer")) ChooseCustomer(office, line.Value("customer"), PageIndex::kCorrespondence);
  RequireLetterType(office, page.ZEMLO_LetterType, line.Value("type"),
                    " \"zemlo-letters trial\" makes one to look at.");
  Pick(page.ZEMLO_LetterType, line.Value("type"), "The list of letter types is disabled.");
  if (!line.IsSet("form")) return;
  Pick(page.ZEMLO_FormTypeCodes, line.Value("form-type"),
       "Form type \"" + line.Value("form-type") + "\" does not go with letter type \"" + line.Value("type") +
           "\".");
  page.txtFormNum.SetText(line.Value("form"));
}

}  // namespace

void AddLetterOptions(CommandLine& line) {
  line.DataOption()
      .Option("type", "CODE", "The letter type.")
      .Option("customer", "ID", "The customer the letter goes to.")
      .Option("form-type", "T", "The type of the document the letter is about.")
      .Option("form", "NUMBER", "The document's number, with its check digit.");
}

std::string LetterOptionFault(const CommandLine& line) {
  if (!line.IsSet("type")) return "--type is missing.";
  if (line.IsSet("form") != line.IsSet("form-type")) return "--form-type and --form go together.";
  return "";
}

std::string SubjectFault(const CommandLine& line) {
  return line.IsSet("customer") == line.IsSet("form") ? "Name either --customer or --form-type and --form."
                                                      : "";
}

void AskForLetter(HeadlessOffice& office, const CommandLine& line) {
  FillRequest(office, line);
  auto& create = office.page().OptOnline[workspace::CorrespondencePage::kCreateLetter];
  RequireEnabled(create);
  create.UserClicks();
  office.RunUntilIdle();
}

void TellNotFilled(const HeadlessOffice& office) {
  const auto& names = office.outcome().not_filled;
  if (names.empty()) return;
  Notices() << "These bookmarks of the template have no field:";
  for (const auto& name : names) Notices() << ' ' << name;
  Notices() << '\n';
}

}  // namespace apps
